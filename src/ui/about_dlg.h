#pragma once
// "About Tivox": the program's name, version and purpose.

#include <QDialog>

namespace tivox {

class CAboutDlg : public QDialog {
    Q_OBJECT
public:
    explicit CAboutDlg(QWidget* parent = nullptr);
};

} // namespace tivox
