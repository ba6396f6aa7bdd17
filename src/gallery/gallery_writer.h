#pragma once
// Writes the pages of a static HTML gallery: thumbnail pages ("thumbs1.html",
// ...) with a grid of small pictures, each linking to the photo page
// ("photo1.html", ...) that shows its picture large. The pictures are already
// in the gallery folder's "pics" and "pics/thumbs"; the writer lists
// "pics/thumbs" only, by name in byte order, and takes for granted that
// "pics" holds the same names. All links are relative.
//
// User interface thread (or any one thread); lives for one Write().

#include <memory>
#include <string>
#include <vector>

#include "platform/geometry.h"
#include "platform/ui_text.h"

namespace tivox {

class IPrompt;
class PageFile;

class CGalleryWriter {
public:
    // Tiles are given as across (width) and down (height). The four
    // navigation words come through `translate` when one is given.
    CGalleryWriter(std::string folder, std::string title, Size thumbTiles, Size photoTiles,
                   IPrompt& prompt, const Translator& translate = {});
    virtual ~CGalleryWriter();
    CGalleryWriter(const CGalleryWriter&) = delete;
    CGalleryWriter& operator=(const CGalleryWriter&) = delete;

    // True when the gallery stands (also when there was no picture, and no
    // page was written). False without a message when a picture folder is
    // missing or a tile number is below 1; false after a stop message when
    // a page could not be written. Pages written so far stay.
    bool Write();

    int ThumbPageCount() const { return m_thumbPageCount; }
    int PhotoPageCount() const { return m_photoPageCount; }
    int PictureCount() const { return m_pictureCount; }

private:
    bool OpenThumbPage(int& thumbPage);
    bool CloseThumbPage();
    bool WriteThumbNavigation(int page);
    bool OpenPhotoPage(int& photoPage, int thumbPage);
    bool ClosePhotoPage(int photoPage, int thumbPage);
    bool WritePhotoNavigation(int page, int thumbPage, bool top);
    // The part of a navigation row that both kinds of page share: the back
    // link, the middle entry, the forward link.
    bool WriteNavigation(PageFile& file, const std::string& previousPage, const std::string& middle,
                         const std::string& nextPage);
    bool Fail(const char* message);

    std::string m_folder;
    std::string m_title;
    int m_thumbTilesX;
    int m_thumbTilesY;
    int m_photoTilesX;
    int m_photoTilesY;
    std::unique_ptr<PageFile> m_thumbFile;
    std::unique_ptr<PageFile> m_photoFile;
    int m_photoPageCount = 0;
    int m_thumbPageCount = 0;
    int m_pictureCount = 0;
    std::string m_previousText;
    std::string m_homeText;
    std::string m_nextText;
    std::string m_galleryText;
    IPrompt& m_prompt;
};

// The names of the files in `folder` (as ListFolder tells them) that end in
// ".jpg" (any case), sorted by byte order. False when the folder cannot be
// read.
bool ListGalleryPictures(const std::string& folder, std::vector<std::string>& names);

} // namespace tivox
