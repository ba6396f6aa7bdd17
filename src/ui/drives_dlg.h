#pragma once
// The drive chooser: every mounted drive with its picture, the details of
// the selected one below the list, and Refresh.

#include <QDialog>
#include <functional>
#include <vector>

#include "acquire/drive_info.h"

class QLabel;
class QListWidget;
class QListWidgetItem;

namespace tivox {

// Gives every drive of the system, inspected.
using DriveLister = std::function<std::vector<CDriveInfo>()>;

class CDrivesDlg : public QDialog {
    Q_OBJECT
public:
    CDrivesDlg(DriveLister lister, QWidget* parent = nullptr);

    // Reads the drives anew and lists them.
    void FillList();
    // Takes the list's current item as the selection and shows its details.
    void UpdateDescription();
    void OnRefresh();
    // The selected record, or null when there is none (or it is gone).
    const CDriveInfo* GetSelectedDrive() const;

    QListWidget* List() const { return m_list; }
    QString Description() const { return m_description; }
    int Selected() const { return m_selected; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    DriveLister m_lister;
    QListWidget* m_list;
    QLabel* m_descriptionLabel;
    QString m_description;
    std::vector<CDriveInfo> m_drives;
    int m_selected = -1;
};

// The picture of a drive image index, 16 by 16.
QIcon DriveIcon(int imageIndex);

} // namespace tivox
