#include "gallery/gallery_writer.h"

#include <cstdio>

#include "acquire/file_walker.h"
#include "gallery/gallery_pages.h"
#include "gallery/link_text.h"
#include "gallery/page_file.h"
#include "platform/folder_listing.h"
#include "platform/user_seams.h"

namespace tivox {

namespace {

std::string PageName(const char* stem, int number) {
    char name[40];
    std::snprintf(name, sizeof name, "%s%d.html", stem, number);
    return name;
}

std::string JoinPath(const std::string& folder, const std::string& name) {
    if (folder.empty() || folder.back() == '/')
        return folder + name;
    return folder + "/" + name;
}

// Writes one cell into the grid of a page at column x, row y and moves on to
// the next place; a full row is closed.
bool WriteCell(PageFile& file, const std::string& cell, int& x, int& y, int across, int down) {
    bool ok = (x != 0 || file.Write(g_rowOpen)) && file.Write(cell);
    if (++x == across) {
        x = 0;
        if (++y == down)
            y = 0;
        ok = ok && file.Write(g_rowClose);
    }
    return ok;
}

bool EndsInJpg(const std::string& name) {
    return name.size() >= 4 && EqualNoCase(name.substr(name.size() - 4), ".jpg");
}

} // namespace

bool ListGalleryPictures(const std::string& folder, std::vector<std::string>& names) {
    names.clear();
    std::vector<FolderEntry> entries;
    if (!ListFolder(folder, entries))
        return false;
    for (FolderEntry& e : entries)
        if (e.kind == EntryKind::File && EndsInJpg(e.name))
            names.push_back(std::move(e.name));
    return true;
}

CGalleryWriter::CGalleryWriter(std::string folder, std::string title, Size thumbTiles,
                               Size photoTiles, IPrompt& prompt, const Translator& translate)
    : m_folder(std::move(folder)), m_title(std::move(title)), m_thumbTilesX(thumbTiles.width),
      m_thumbTilesY(thumbTiles.height), m_photoTilesX(photoTiles.width),
      m_photoTilesY(photoTiles.height), m_thumbFile(std::make_unique<PageFile>()),
      m_photoFile(std::make_unique<PageFile>()),
      m_previousText(RenderUiText({TIVOX_TR("Previous"), {}}, translate)),
      m_homeText(RenderUiText({TIVOX_TR("Home"), {}}, translate)),
      m_nextText(RenderUiText({TIVOX_TR("Next"), {}}, translate)),
      m_galleryText(RenderUiText({TIVOX_TR("Gallery"), {}}, translate)), m_prompt(prompt) {}

CGalleryWriter::~CGalleryWriter() = default;

bool CGalleryWriter::Fail(const char* message) {
    m_prompt.Ask({message, {}}, PromptIcon::Stop, PromptButtons::Ok, PromptAnswer::Ok);
    return false;
}

bool CGalleryWriter::Write() {
    static constexpr char kThumbError[] = TIVOX_TR("Error creating thumbnail page: aborting");
    static constexpr char kPhotoError[] = TIVOX_TR("Error creating photo page: aborting");

    if (m_thumbTilesX < 1 || m_thumbTilesY < 1 || m_photoTilesX < 1 || m_photoTilesY < 1)
        return false;
    const std::string pics = JoinPath(m_folder, "pics");
    const std::string thumbs = JoinPath(pics, "thumbs");
    std::vector<std::string> names;
    if (!IsFolder(pics) || !IsFolder(thumbs) || !ListGalleryPictures(thumbs, names))
        return false;

    // Truncating division: no picture still counts one page of each kind,
    // and none is written.
    const long long n = static_cast<long long>(names.size());
    m_pictureCount = static_cast<int>(n);
    m_thumbPageCount = static_cast<int>(((n - 1) / m_thumbTilesX) / m_thumbTilesY + 1);
    m_photoPageCount = static_cast<int>(((n - 1) / m_photoTilesX) / m_photoTilesY + 1);

    int thumbPage = 0, photoPage = 0;
    int tx = 0, ty = 0, px = 0, py = 0;
    std::string link;
    for (const std::string& name : names) {
        const std::string linkName = FileNameForLink(name);
        if (tx == 0 && ty == 0) {
            if (!OpenThumbPage(thumbPage) || !WriteThumbNavigation(thumbPage))
                return Fail(kThumbError);
        }
        if (px == 0 && py == 0) {
            if (!OpenPhotoPage(photoPage, thumbPage))
                return Fail(kPhotoError);
            link = PageName("photo", photoPage);
        }

        if (!WriteCell(*m_thumbFile,
                       g_thumbCellOpen + link + g_thumbCellImage + g_thumbsUrl + linkName +
                           g_thumbCellClose,
                       tx, ty, m_thumbTilesX, m_thumbTilesY))
            return Fail(kThumbError);
        if (!WriteCell(*m_photoFile, g_photoCellOpen + (g_picsUrl + linkName) + g_photoCellClose,
                       px, py, m_photoTilesX, m_photoTilesY))
            return Fail(kPhotoError);

        if (tx == 0 && ty == 0) {
            if (!WriteThumbNavigation(thumbPage) || !CloseThumbPage())
                return Fail(kThumbError);
        }
        if (px == 0 && py == 0) {
            if (!ClosePhotoPage(photoPage, thumbPage))
                return Fail(kPhotoError);
        }
    }

    // A page that was not filled up is still open.
    if (thumbPage > 0 && (tx != 0 || ty != 0)) {
        if ((tx != 0 && !m_thumbFile->Write(g_rowClose)) || !WriteThumbNavigation(thumbPage) ||
            !CloseThumbPage())
            return Fail(kThumbError);
    }
    if (photoPage > 0 && (px != 0 || py != 0)) {
        if ((px != 0 && !m_photoFile->Write(g_rowClose)) || !ClosePhotoPage(photoPage, thumbPage))
            return Fail(kPhotoError);
    }
    return true;
}

bool CGalleryWriter::OpenThumbPage(int& thumbPage) {
    ++thumbPage;
    PageFile& file = *m_thumbFile;
    return file.Create(JoinPath(m_folder, PageName("thumbs", thumbPage))) &&
           file.Write(g_thumbPageHead) && file.WriteRaw(m_title) && file.Write(g_thumbPageTable);
}

bool CGalleryWriter::CloseThumbPage() {
    return m_thumbFile->Write(g_thumbPageTail) && m_thumbFile->Close();
}

bool CGalleryWriter::OpenPhotoPage(int& photoPage, int thumbPage) {
    ++photoPage;
    PageFile& file = *m_photoFile;
    return file.Create(JoinPath(m_folder, PageName("photo", photoPage))) &&
           file.Write(g_photoPageHead) && WritePhotoNavigation(photoPage, thumbPage, true) &&
           file.Write(g_photoPageTable);
}

bool CGalleryWriter::ClosePhotoPage(int photoPage, int thumbPage) {
    PageFile& file = *m_photoFile;
    return file.Write(g_photoPageTableEnd) && WritePhotoNavigation(photoPage, thumbPage, false) &&
           file.Write(g_photoPageTail) && file.Close();
}

bool CGalleryWriter::WriteThumbNavigation(int page) {
    const std::string middle = std::string(g_navHome) + m_homeText;
    return WriteNavigation(*m_thumbFile, page > 1 ? PageName("thumbs", page - 1) : "", middle,
                           page < m_thumbPageCount ? PageName("thumbs", page + 1) : "");
}

bool CGalleryWriter::WritePhotoNavigation(int page, int thumbPage, bool top) {
    PageFile& file = *m_photoFile;
    const std::string middle =
        g_navGallery + PageName("thumbs", thumbPage) + g_linkTarget + m_galleryText;
    return (top || file.Write(g_lineBreak)) &&
           WriteNavigation(file, page > 1 ? PageName("photo", page - 1) : "", middle,
                           page < m_photoPageCount ? PageName("photo", page + 1) : "") &&
           (!top || file.Write(g_lineBreak));
}

bool CGalleryWriter::WriteNavigation(PageFile& file, const std::string& previousPage,
                                     const std::string& middle, const std::string& nextPage) {
    bool ok = file.Write(g_navRowHead) && file.Write(g_navCell) && file.Write(g_navFont) &&
              file.Write(g_navBack);
    if (!previousPage.empty())
        ok = ok && file.Write(g_linkOpen) && file.Write(previousPage) && file.Write(g_linkTarget);
    ok = ok && file.Write(m_previousText);
    if (!previousPage.empty())
        ok = ok && file.Write(g_linkClose);
    ok = ok && file.Write(g_navFirstEnd) && file.Write(g_navFont) && file.Write(middle) &&
         file.Write(g_navMiddleEnd) && file.Write(g_navFont) && file.Write(g_navForward);
    if (!nextPage.empty())
        ok = ok && file.Write(g_linkOpen) && file.Write(nextPage) && file.Write(g_linkTarget);
    ok = ok && file.Write(m_nextText);
    if (!nextPage.empty())
        ok = ok && file.Write(g_linkClose);
    return ok && file.Write(g_navLastEnd) && file.Write(g_navRowTail);
}

} // namespace tivox
