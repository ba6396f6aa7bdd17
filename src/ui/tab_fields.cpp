#include "ui/tab_fields.h"

#include <QIntValidator>

#include "app/main_dialog/main_dialog_exchange.h"

namespace tivox {

bool ReadNumberField(QLineEdit* edit, std::uint32_t lower, std::uint32_t upper,
                     std::uint32_t& value, IPrompt& prompt) {
    bool ok = false;
    const qulonglong number = edit->text().trimmed().toULongLong(&ok);
    if (ok && number <= 0xFFFFFFFFull) {
        value = std::uint32_t(number);
        if (value >= lower && value <= upper) {
            return true;
        }
    }
    prompt.Ask(RangeMessage(lower, upper), PromptIcon::Warning, PromptButtons::Ok,
               PromptAnswer::Ok);
    edit->setFocus();
    edit->selectAll();
    return false;
}

QLineEdit* MakeNumberField(QWidget* parent, std::uint32_t value) {
    auto* edit = new QLineEdit(QString::number(value), parent);
    edit->setAlignment(Qt::AlignRight);
    edit->setMaxLength(10);
    edit->setFixedWidth(edit->fontMetrics().horizontalAdvance(QStringLiteral("0000000")));
    return edit;
}

} // namespace tivox
