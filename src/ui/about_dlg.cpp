#include "ui/about_dlg.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace tivox {

CAboutDlg::CAboutDlg(QWidget* parent) : QDialog(parent) {
    auto tr = [](const char* text) { return QCoreApplication::translate("CAboutDlg", text); };
    setWindowTitle(tr("About Tivox"));
    auto* layout = new QVBoxLayout(this);
    auto* top = new QHBoxLayout;
    auto* icon = new QLabel(this);
    icon->setPixmap(QIcon(QStringLiteral(":/icons/tivoxplus.svg")).pixmap(32, 32));
    icon->setAlignment(Qt::AlignTop);
    top->addWidget(icon);
    auto* texts = new QVBoxLayout;
    texts->addWidget(new QLabel(tr("Tivox Version 1.5"), this));
    texts->addWidget(new QLabel(
        tr("Transfers photos from digital cameras\nto PCs and helps with photo maintenance."),
        this));
    top->addLayout(texts);
    layout->addLayout(top);
    auto* box = new QDialogButtonBox(this);
    box->addButton(tr("OK"), QDialogButtonBox::AcceptRole)->setDefault(true);
    connect(box, &QDialogButtonBox::accepted, this, &QDialog::accept);
    layout->addWidget(box);
}

} // namespace tivox
