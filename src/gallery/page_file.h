#pragma once
// One gallery page on disc while it is written. Text goes out at once through
// a small stdio buffer; every "\n" of the page texts becomes "\r\n", the line
// end of the pages. A failure sticks: once a write failed, Close reports it.

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace tivox {

class PageFile {
public:
    PageFile() = default;
    PageFile(const PageFile&) = delete;
    PageFile& operator=(const PageFile&) = delete;

    // Creates or replaces the file. False when it cannot be created.
    bool Create(const std::string& path);
    // Writes text with line ends turned into "\r\n".
    bool Write(std::string_view text);
    // Writes bytes as they are (the title goes out byte for byte).
    bool WriteRaw(std::string_view bytes);
    // Flushes and closes. False when any write or the close failed.
    bool Close();
    bool IsOpen() const { return m_file != nullptr; }

private:
    struct Closer {
        void operator()(std::FILE* f) const { std::fclose(f); }
    };
    std::unique_ptr<std::FILE, Closer> m_file;
    bool m_failed = false;
};

} // namespace tivox
