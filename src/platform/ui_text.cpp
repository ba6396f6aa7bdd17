#include "platform/ui_text.h"

namespace tivox {

std::string RenderUiText(const UiText& text, const Translator& translate) {
    const std::string format = translate ? translate(text.format) : text.format;
    std::string out;
    out.reserve(format.size());
    std::size_t next = 0;
    for (std::size_t i = 0; i < format.size(); ++i) {
        if (format[i] == '%' && i + 1 < format.size()) {
            if (format[i + 1] == 's') {
                if (next < text.args.size())
                    out += text.args[next];
                ++next;
                ++i;
                continue;
            }
            if (format[i + 1] == '%') {
                out += '%';
                ++i;
                continue;
            }
        }
        out += format[i];
    }
    return out;
}

} // namespace tivox
