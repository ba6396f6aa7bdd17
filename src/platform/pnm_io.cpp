#include "platform/pnm_io.h"

#include <cctype>
#include <cstring>

#include "platform/atomic_file.h"

namespace tivox {

namespace {

// Reads header tokens of a PNM file, skipping blanks and comments.
class HeaderReader {
public:
    HeaderReader(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}

    bool Word(std::string& word) {
        SkipBlanks();
        word.clear();
        while (m_pos < m_size && !std::isspace(m_data[m_pos]) && word.size() < 64)
            word.push_back(char(m_data[m_pos++]));
        return !word.empty();
    }
    bool Number(int& value) {
        std::string w;
        if (!Word(w) || w.size() > 9)
            return false;
        value = 0;
        for (char c : w) {
            if (c < '0' || c > '9')
                return false;
            value = value * 10 + (c - '0');
        }
        return true;
    }
    // The single blank that ends a P5/P6 header.
    bool EndOfHeader() {
        if (m_pos >= m_size || !std::isspace(m_data[m_pos]))
            return false;
        ++m_pos;
        return true;
    }
    // The end of a line, for PAM.
    void SkipLine() {
        while (m_pos < m_size && m_data[m_pos] != '\n')
            ++m_pos;
        if (m_pos < m_size)
            ++m_pos;
    }
    std::size_t Pos() const { return m_pos; }

private:
    void SkipBlanks() {
        while (m_pos < m_size) {
            if (m_data[m_pos] == '#')
                SkipLine();
            else if (std::isspace(m_data[m_pos]))
                ++m_pos;
            else
                break;
        }
    }
    const std::uint8_t* m_data;
    std::size_t m_size;
    std::size_t m_pos = 0;
};

bool EndsWithNoCase(const std::string& s, const char* tail) {
    const std::size_t n = std::strlen(tail);
    if (s.size() < n)
        return false;
    for (std::size_t i = 0; i < n; ++i)
        if (std::tolower(static_cast<unsigned char>(s[s.size() - n + i])) != tail[i])
            return false;
    return true;
}

} // namespace

bool LooksLikePnm(const std::uint8_t* data, std::size_t size) {
    return size >= 3 && data[0] == 'P' && (data[1] == '5' || data[1] == '6' || data[1] == '7') &&
           std::isspace(data[2]);
}

bool ReadPnm(const std::uint8_t* data, std::size_t size, Bitmap& out, std::string& error) {
    if (!LooksLikePnm(data, size)) {
        error = "not a binary PGM, PPM or PAM picture";
        return false;
    }
    HeaderReader r(data, size);
    std::string magic;
    r.Word(magic);
    int width = 0, height = 0, maxval = 0, depth = 0;
    if (magic == "P7") {
        std::string key, tupl;
        for (;;) {
            if (!r.Word(key)) {
                error = "PAM header without ENDHDR";
                return false;
            }
            if (key == "ENDHDR") {
                r.SkipLine();
                break;
            }
            bool ok = true;
            if (key == "WIDTH")
                ok = r.Number(width);
            else if (key == "HEIGHT")
                ok = r.Number(height);
            else if (key == "DEPTH")
                ok = r.Number(depth);
            else if (key == "MAXVAL")
                ok = r.Number(maxval);
            else if (key == "TUPLTYPE")
                ok = r.Word(tupl);
            else
                r.SkipLine();
            if (!ok) {
                error = "malformed PAM header";
                return false;
            }
        }
    } else {
        depth = magic == "P5" ? 1 : 3;
        if (!r.Number(width) || !r.Number(height) || !r.Number(maxval) || !r.EndOfHeader()) {
            error = "malformed PNM header";
            return false;
        }
    }
    if (maxval != 255 || depth < 1 || depth > 4 || width <= 0 || height <= 0) {
        error = "unsupported PNM picture (8-bit grey, RGB or RGBA only)";
        return false;
    }
    const std::size_t need = std::size_t(width) * std::size_t(height) * std::size_t(depth);
    if (size - r.Pos() < need) {
        error = "PNM picture shorter than its header says";
        return false;
    }
    if (!out.Reset(width, height)) {
        error = "picture too large for the memory budget";
        return false;
    }
    const std::uint8_t* p = data + r.Pos();
    const bool grey = depth <= 2, alpha = depth == 2 || depth == 4;
    for (int y = 0; y < height; ++y) {
        std::uint8_t* d = out.Row(y);
        for (int x = 0; x < width; ++x, d += 4) {
            const std::uint8_t rr = p[0], g = grey ? p[0] : p[1], b = grey ? p[0] : p[2];
            d[0] = b;
            d[1] = g;
            d[2] = rr;
            d[3] = alpha ? p[depth - 1] : 255;
            p += depth;
        }
    }
    return true;
}

bool ReadPnmFile(const std::string& path, Bitmap& out, std::string& error) {
    std::vector<std::uint8_t> bytes;
    return ReadWholeFile(path, bytes, error) && ReadPnm(bytes.data(), bytes.size(), out, error);
}

void EncodePnm(const Bitmap& image, bool withAlpha, std::vector<std::uint8_t>& out) {
    const std::string head = withAlpha ? "P7\nWIDTH " + std::to_string(image.Width()) +
                                             "\nHEIGHT " + std::to_string(image.Height()) +
                                             "\nDEPTH 4\nMAXVAL 255\nTUPLTYPE RGB_ALPHA\nENDHDR\n"
                                       : "P6\n" + std::to_string(image.Width()) + " " +
                                             std::to_string(image.Height()) + "\n255\n";
    const int channels = withAlpha ? 4 : 3;
    out.assign(head.begin(), head.end());
    out.reserve(out.size() +
                std::size_t(image.Width()) * std::size_t(image.Height()) * std::size_t(channels));
    for (int y = 0; y < image.Height(); ++y) {
        const std::uint8_t* s = image.Row(y);
        for (int x = 0; x < image.Width(); ++x, s += 4) {
            out.push_back(s[2]);
            out.push_back(s[1]);
            out.push_back(s[0]);
            if (withAlpha)
                out.push_back(s[3]);
        }
    }
}

bool WritePnmFile(const Bitmap& image, const std::string& path, std::string& error) {
    std::vector<std::uint8_t> bytes;
    EncodePnm(image, EndsWithNoCase(path, ".pam"), bytes);
    return WriteWholeFile(path, bytes.data(), bytes.size(), error);
}

bool IsPnmName(const std::string& path) {
    return EndsWithNoCase(path, ".ppm") || EndsWithNoCase(path, ".pam");
}

} // namespace tivox
