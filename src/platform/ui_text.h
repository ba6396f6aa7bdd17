#pragma once
// User-visible texts of the core. The core speaks English; a front end may
// translate. A text is kept as its English format plus arguments, so that the
// Qt layer can look the format up in the German translation before the
// arguments go in. Formats use "%s" for each argument, in order.

#include <functional>
#include <string>
#include <vector>

// Marks an English text of the core for the translation file (context "Tivox").
// lupdate is told to read it as QT_TRANSLATE_NOOP; here it is the literal.
#define TIVOX_TR(text) text

namespace tivox {

struct UiText {
    std::string format;
    std::vector<std::string> args;
};

using Translator = std::function<std::string(const std::string& english)>;

// The text with its arguments in place, after `translate` (when given) has
// turned the format into the user's language. "%%" stands for one "%".
std::string RenderUiText(const UiText& text, const Translator& translate = {});

} // namespace tivox
