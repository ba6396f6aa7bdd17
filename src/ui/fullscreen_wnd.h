#pragma once
// The window of Full Screen Editing: a frameless window over the whole screen
// that shows the photo folder as pages of tiles or one photo at a time, with
// markers, the status bar, the crop and red-eye tools and the floating Image
// Operations window. The object lives as long as its owner; the window itself
// is created at each opening (Create) and taken down at each closing
// (DestroyWindow), which stops the thumbnail worker before the list is
// cleared. It wires: CFullScreenPainter paints the frame it describes, and
// its key and mouse handlers live in fullscreen_input.cpp.
//
// Threads: everything runs on the GUI thread except InvalidateTile, which the
// thumbnail worker calls; it only posts the repaint to the GUI thread.

#include <QCursor>
#include <QWidget>
#include <cstdint>
#include <memory>
#include <string>

#include "app/fullscreen/fullscreen_hover.h"
#include "app/fullscreen/tile_layout.h"
#include "app/fullscreen/tool_state.h"
#include "photos/edit_host.h"
#include "photos/screen_image_maker.h"
#include "platform/bitmap_recycler.h"
#include "platform/user_seams.h"
#include "ui/fullscreen_painter.h"

class QScreen;

namespace tivox {

class Bitmap;
class CImageOpsDlg;
class CPhoto;
class CPhotoList;
class CSettings;

// What the window reads of the main dialog.
class IFullScreenOwner {
public:
    virtual ~IFullScreenOwner() = default;
    virtual int GetJpegQuality() const = 0;
    virtual std::string GetGalleryFolder() const = 0;   // base folder of the galleries
    virtual std::string GetPhotoFolderPath() const = 0; // the open photo folder
    // The settings that travel with the settings file (the print-size unit).
    virtual CSettings& GetSettings() = 0;
};

class CFullScreenWnd : public QWidget, public IEditHost {
    Q_OBJECT
public:
    explicit CFullScreenWnd(QWidget* parent = nullptr);
    ~CFullScreenWnd() override;

    // Opening: Create (if there is no window), SetMainDlg, Configure, then the
    // list gets GetThumbSize and this window and opens the folder, and last
    // SetPhotoList. Create covers `screen` (the primary screen when null).
    bool HasWindow() const { return m_created; }
    void Create(QScreen* screen = nullptr);
    // The same over an area of the desktop given directly.
    void Create(const QRect& area);
    void SetMainDlg(IFullScreenOwner* owner) { m_mainDlg = owner; }
    IFullScreenOwner* GetMainDlg() const { return m_mainDlg; }
    void Configure(std::uint32_t tilesX, std::uint32_t tilesY, std::uint32_t statusHeight);
    void SetPhotoList(CPhotoList* list);
    // Opens `folder` in `list` for this window (its thumbnail size, its
    // repaints, `thumbnailBudget` bytes of thumbnails) and shows it.
    void OpenFolder(CPhotoList& list, const std::string& folder,
                    std::size_t thumbnailBudget = SIZE_MAX);
    // Closing: stops the worker, clears the list (pending edits end unsaved),
    // drops the buffers and the Image Operations window, hides the window.
    void DestroyWindow();

    // Message boxes and the wait cursor; tests script them. Null: Qt's own.
    void SetPrompt(IPrompt* prompt);
    void SetBusyIndicator(IBusyIndicator* busy);
    IPrompt& Prompt() { return *m_prompt; }
    IBusyIndicator& Busy() { return *m_busy; }
    // The count with Cancel of work over many photos. Null: a progress
    // dialog over this window.
    void SetStepProgress(IStepProgress* progress);
    // Every long work over the photos runs under this progress; while it
    // runs, no picture of the single view comes in from the side.
    IStepProgress& StepProgress() { return m_workProgress; }

    // IEditHost.
    Size GetScreenSize() const override { return m_layout.GetScreenSize(); }
    Size GetThumbSize() const override { return m_layout.GetThumbSize(); }
    int GetJpegQuality() const override;
    CPhotoList* GetPhotoList() override { return m_photoList; }
    // A change to the photos: a picture on its way may show the file as it
    // was.
    void Invalidate() override;
    void InvalidateTile(int index) override;
    void BringToTop() override;

    // The photo in question: the one shown, or in tile mode the one under the
    // mouse. Null without one; without a list it says so in a message box.
    CPhoto* GetCurrentPhoto() override;
    // The picture of the photo in question, if it has one; in the single
    // view waits for one on its way, for the tools that work on it.
    Bitmap* CurrentScreenImage();
    BitmapRecycler* GetBitmapRecycler() override { return &m_recycler; }

    // Input and tools.
    void SetMode(std::int32_t mode);
    void ToggleMark();
    void StepForward();
    void StepBackward();
    void UpdateCropRect(Point point);
    void SyncToolPages();
    // Each photo is committed whole or left pending; false when the user
    // cancelled or a photo could not be saved.
    bool CommitChanges();
    // Before leaving with edits that were not committed: asks whether to
    // commit them (Yes), drop them (No) or stay (Cancel). True when the
    // window may close.
    bool ConfirmLeaving();
    void DiscardChanges();

    // State, for the Image Operations window and tests.
    const CTileLayout& Layout() const { return m_layout; }
    const CToolState& Tools() const { return m_tools; }
    CImageOpsDlg* ImageOpsDlg() const { return m_imageOpsDlg.get(); }
    bool IsSinglePhoto() const { return m_singlePhoto; }
    std::int32_t PageStart() const { return m_pageStart; }
    std::int32_t CurrentIndex() const { return m_currentIndex; }
    std::int32_t CurrentMarker() const { return m_currentMarker; }
    void SetCurrentMarker(std::int32_t marker) { m_currentMarker = marker; }
    Point MousePos() const { return m_mousePos; }
    // The text the status bar shows for the hovered photo after the last
    // paint; empty when it showed none.
    const QString& StatusText() const { return m_statusText; }
    // Which of the four cursors is set.
    ToolCursor CurrentCursor() const { return m_cursorShape; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void ResetState();
    void ApplyCursor(ToolCursor cursor);
    void OnTileReady(int index);
    // Tells the list what is shown, so that its worker serves that first.
    void ShowRangeToList();
    void NextPage();
    void PreviousPage();
    void NextPhoto();
    void PreviousPhoto();
    void ChangeView();
    void FixRedEye(Point point);
    void DragCropRect(Point point);
    void AskForCrop();
    void ShowImageOpsDlg(const QPoint& globalPos);
    bool CurrentIsPortrait();
    // The single view's picture comes from the maker's thread; until it is
    // there the photo's thumbnail stands in, enlarged.
    void RequestScreenImage(const CPhoto& photo);
    void InstallScreenImage();
    void InstallScreenImage(ScreenImage made);
    void InvalidateEdges(const RectEdges& edges);

    int m_screenWidth = 0;
    int m_screenHeight = 0;
    QCursor m_cropCursor;
    QCursor m_selectCursor;
    QCursor m_moveCursor;
    QCursor m_redEyeCursor;
    CPhotoList* m_photoList = nullptr;
    IFullScreenOwner* m_mainDlg = nullptr;
    std::unique_ptr<CImageOpsDlg> m_imageOpsDlg;
    std::int32_t m_pageStart = 0;
    std::int32_t m_currentIndex = 0;
    CTileLayout m_layout;
    CHoverTracker m_hover;
    Point m_mousePos{-1, -1};
    std::int32_t m_currentMarker = 1;
    bool m_singlePhoto = false;
    CToolState m_tools;
    CFullScreenPainter m_painter;
    // The full-size buffer that commits pass on to each other while the
    // window is open.
    BitmapRecycler m_recycler;

    bool m_created = false;
    ToolCursor m_cursorShape = ToolCursor::Select;
    QString m_statusText;
    std::unique_ptr<IPrompt> m_qtPrompt;
    std::unique_ptr<IBusyIndicator> m_qtBusy;
    IPrompt* m_prompt = nullptr;
    IBusyIndicator* m_busy = nullptr;
    std::unique_ptr<IStepProgress> m_qtStepProgress;
    IStepProgress* m_stepProgress = nullptr;
    // Counts the runs of long work around the progress seam in use.
    class WorkProgress final : public IStepProgress {
    public:
        explicit WorkProgress(CFullScreenWnd& window) : m_window(window) {}
        void Begin(int total, const UiText& title) override;
        bool Step(int done) override { return m_window.m_stepProgress->Step(done); }
        void End() override;
        bool Running() const { return m_depth > 0; }

    private:
        CFullScreenWnd& m_window;
        int m_depth = 0;
    };
    WorkProgress m_workProgress{*this};
    std::string m_screenRequested; // the photo whose picture is on its way
    // Last: its thread must end before anything it reports to goes.
    CScreenImageMaker m_screenMaker{[this] {
        QMetaObject::invokeMethod(
            this, [this] { InstallScreenImage(); }, Qt::QueuedConnection);
    }};
};

} // namespace tivox
