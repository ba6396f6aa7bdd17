#include "gallery/page_file.h"

namespace tivox {

bool PageFile::Create(const std::string& path) {
    m_file.reset(std::fopen(path.c_str(), "wb"));
    m_failed = m_file == nullptr;
    return !m_failed;
}

bool PageFile::WriteRaw(std::string_view bytes) {
    if (!m_file || m_failed)
        return false;
    if (!bytes.empty() && std::fwrite(bytes.data(), 1, bytes.size(), m_file.get()) != bytes.size())
        m_failed = true;
    return !m_failed;
}

bool PageFile::Write(std::string_view text) {
    std::size_t start = 0;
    for (std::size_t nl = text.find('\n'); nl != std::string_view::npos;
         nl = text.find('\n', start)) {
        if (!WriteRaw(text.substr(start, nl - start)) || !WriteRaw("\r\n"))
            return false;
        start = nl + 1;
    }
    return WriteRaw(text.substr(start));
}

bool PageFile::Close() {
    if (!m_file)
        return false;
    const bool flushed = std::fflush(m_file.get()) == 0 && std::ferror(m_file.get()) == 0;
    const bool closed = std::fclose(m_file.release()) == 0;
    const bool ok = !m_failed && flushed && closed;
    m_failed = false;
    return ok;
}

} // namespace tivox
