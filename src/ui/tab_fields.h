#pragma once
// Reading the number fields of the tab pages: a field outside its limits, or
// no number at all, is refused with the message that names both limits, and
// the focus goes to it. GUI thread only.

#include <QLineEdit>
#include <cstdint>

#include "platform/user_seams.h"

namespace tivox {

// Reads `edit` into `value`. A number outside [lower, upper] is stored and
// then refused; a text that is no number leaves `value` as it was. False on
// a refusal, after the message.
bool ReadNumberField(QLineEdit* edit, std::uint32_t lower, std::uint32_t upper,
                     std::uint32_t& value, IPrompt& prompt);

// A number field: narrow, right-aligned, digits only.
QLineEdit* MakeNumberField(QWidget* parent, std::uint32_t value);

} // namespace tivox
