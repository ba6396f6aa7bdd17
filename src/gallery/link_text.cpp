#include "gallery/link_text.h"

#include "platform/percent_encoding.h"

namespace tivox {

namespace {

// Unreserved characters and the sub-delimiters that a path segment may hold
// as they are. ":" stays encoded so that no segment reads like a scheme.
bool StaysInSegment(unsigned char c) {
    if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'))
        return true;
    switch (c) {
    case '-':
    case '.':
    case '_':
    case '~':
    case '!':
    case '$':
    case '&':
    case '\'':
    case '(':
    case ')':
    case '*':
    case '+':
    case ',':
    case ';':
    case '=':
    case '@':
        return true;
    default:
        return false;
    }
}

} // namespace

std::string PercentEncodeSegment(std::string_view name) {
    return PercentEncode(name, StaysInSegment);
}

std::string EscapeHtml(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (const char ch : text) {
        switch (ch) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        case '\'':
            out += "&#39;";
            break;
        default:
            out += ch;
            break;
        }
    }
    return out;
}

std::string FileNameForLink(std::string_view name) {
    return EscapeHtml(PercentEncodeSegment(name));
}

} // namespace tivox
