#include "app/main_dialog/settings.h"

#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <filesystem>

#include "acquire/folder_paths.h"
#include "platform/atomic_file.h"

namespace tivox {

namespace {

constexpr const char* kFileName = "TivoxSettings.dat";

class Writer {
public:
    void Word(std::uint32_t value) {
        for (int i = 0; i < 4; ++i)
            m_bytes.push_back(std::uint8_t(value >> (8 * i)));
    }
    void Half(std::uint16_t value) {
        m_bytes.push_back(std::uint8_t(value));
        m_bytes.push_back(std::uint8_t(value >> 8));
    }
    void String(const std::string& text) {
        const std::size_t n = text.size();
        if (n < 255) {
            m_bytes.push_back(std::uint8_t(n));
        } else if (n < 0xFFFE) {
            m_bytes.push_back(0xFF);
            Half(std::uint16_t(n));
        } else {
            m_bytes.push_back(0xFF);
            Half(0xFFFF);
            Word(std::uint32_t(n));
        }
        m_bytes.insert(m_bytes.end(), text.begin(), text.end());
    }
    std::vector<std::uint8_t> m_bytes;
};

// Reads fields front to back; any read past the end makes the reader fail,
// and every later read fails too.
class Reader {
public:
    explicit Reader(const std::vector<std::uint8_t>& bytes) : m_bytes(bytes) {}
    bool Ok() const { return m_ok; }

    std::uint32_t Word() {
        std::uint32_t v = 0;
        if (!Need(4))
            return 0;
        for (int i = 0; i < 4; ++i)
            v |= std::uint32_t(m_bytes[m_pos + std::size_t(i)]) << (8 * i);
        m_pos += 4;
        return v;
    }
    std::uint16_t Half() {
        if (!Need(2))
            return 0;
        const auto v = std::uint16_t(m_bytes[m_pos] | (m_bytes[m_pos + 1] << 8));
        m_pos += 2;
        return v;
    }
    std::uint8_t Byte() {
        if (!Need(1))
            return 0;
        return m_bytes[m_pos++];
    }
    // A zero byte never stands in a path or a rule: such a string is damage.
    std::string String() {
        std::size_t n = Byte();
        if (n == 0xFF) {
            n = Half();
            // 0xFFFE announced a wide string in the old format: not ours.
            if (n == 0xFFFE)
                m_ok = false;
            else if (n == 0xFFFF)
                n = Word();
        }
        if (!Need(n))
            return {};
        std::string text(m_bytes.begin() + long(m_pos), m_bytes.begin() + long(m_pos + n));
        m_pos += n;
        if (text.find('\0') != std::string::npos)
            m_ok = false;
        return text;
    }

private:
    bool Need(std::size_t n) {
        if (m_ok && m_bytes.size() - m_pos < n)
            m_ok = false;
        return m_ok;
    }
    const std::vector<std::uint8_t>& m_bytes;
    std::size_t m_pos = 0;
    bool m_ok = true;
};

} // namespace

std::vector<std::uint8_t> CSettings::Store() const {
    Writer w;
    w.Word(std::uint32_t(kVersion));
    w.String(m_cameraDrive);
    w.String(m_baseFolder);
    w.String(m_photoFolder);
    w.String(m_galleryFolder);
    w.String(m_renamingRule);
    w.Word(m_tilesX);
    w.Word(m_tilesY);
    w.Word(m_statusBarHeight);
    w.Word(m_createBackup);
    w.Word(m_jpegQuality);
    w.Word(m_metricUnits);
    w.Word(m_thumbnailMemory);
    w.Word(m_turnUpright);
    return w.m_bytes;
}

bool CSettings::Load(const std::vector<std::uint8_t>& bytes) {
    Reader r(bytes);
    CSettings s = *this;
    const auto version = std::int32_t(r.Word());
    // No version below 100 was ever written, and the newest layout reads the
    // files of later versions up to 1000 (their new fields trail). Any other
    // word is not a settings file: its bytes, read as the oldest layout, would
    // give garbage folders and numbers, so it loads nothing.
    if (version < 100 || version > 1000)
        return false;
    // The oldest layout has no gallery folder, backup option, quality or unit;
    // versions 120 to 149 have all but the unit, 150 to 159 all but the
    // thumbnail memory, 160 to 169 all but turning photos upright, which
    // such a file reads as on, its default.
    const bool oldest = version < 120;
    s.m_cameraDrive = r.String();
    s.m_baseFolder = r.String();
    s.m_photoFolder = r.String();
    s.m_galleryFolder = oldest ? DefaultGalleryFolder() : r.String();
    s.m_renamingRule = r.String();
    s.m_tilesX = r.Word();
    s.m_tilesY = r.Word();
    s.m_statusBarHeight = r.Word();
    s.m_createBackup = oldest ? 1 : r.Word();
    s.m_jpegQuality = oldest ? 80 : r.Word();
    s.m_metricUnits = !oldest && version >= 150 ? r.Word() : 1;
    s.m_thumbnailMemory = version >= 160 ? r.Word() : CSettings().m_thumbnailMemory;
    s.m_turnUpright = version >= 170 ? r.Word() : CSettings().m_turnUpright;
    if (!r.Ok())
        return false;
    *this = s;
    return true;
}

bool CSettings::LoadFile(const std::string& path) {
    std::vector<std::uint8_t> bytes;
    std::string error;
    return ReadWholeFile(path, bytes, error) && Load(bytes);
}

bool CSettings::StoreFile(const std::string& path) const {
    std::error_code ec;
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    if (!folder.empty())
        std::filesystem::create_directories(folder, ec);
    // Never rewritten in place: a crash in the middle would lose every setting.
    const std::vector<std::uint8_t> bytes = Store();
    UiText error;
    return WriteFileDurably(path, bytes.data(), bytes.size(), error);
}

std::string GetSettingsPath(const std::string& programPath, const std::string& configHome,
                            const std::string& home) {
    // A file beside the program wins, when it is there and can be replaced:
    // the new file is made beside it, so its folder must be writable too.
    const auto slash = programPath.find_last_of('/');
    if (slash != std::string::npos) {
        const std::string folder = programPath.substr(0, slash + 1);
        const std::string beside = folder + kFileName;
        struct stat st {};
        if (beside != programPath && stat(beside.c_str(), &st) == 0 && S_ISREG(st.st_mode) &&
            access(beside.c_str(), W_OK) == 0 && access(folder.c_str(), W_OK) == 0)
            return beside;
    }
    std::string config =
        !configHome.empty() && configHome[0] == '/' ? configHome : home + "/.config";
    return config + "/tivoxplus/" + kFileName;
}

std::string GetSettingsPath() {
    char exe[PATH_MAX];
    const ssize_t n = readlink("/proc/self/exe", exe, sizeof(exe) - 1);
    const std::string program = n > 0 ? std::string(exe, std::size_t(n)) : std::string();
    const char* config = std::getenv("XDG_CONFIG_HOME");
    const char* home = std::getenv("HOME");
    return GetSettingsPath(program, config ? config : "", home && *home ? home : "/");
}

} // namespace tivox
