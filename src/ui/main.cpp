// tivox: the photo transfer and editing window.

#include <QApplication>

#include "ui/tivox_app.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("TivoxPlus"));
    QApplication::setDesktopFileName(QStringLiteral("tivoxplus"));
    tivox::CTivoxApp tivoxApp(app);
    return tivoxApp.Run();
}
