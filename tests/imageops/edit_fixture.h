#pragma once
// A window double, a scripted prompt and test photos for the tests of the
// processor, the replay of edits and the selection pass.

#include <string>
#include <vector>

#include "photos/edit_host.h"
#include "photos/photo.h"
#include "photos/photo_list.h"
#include "platform/jpeg_codec.h"
#include "platform/user_seams.h"
#include "support/test_jpeg.h"

namespace tivox::test {

class FakeWindow final : public IEditHost {
public:
    Size GetScreenSize() const override { return screen; }
    Size GetThumbSize() const override { return thumb; }
    int GetJpegQuality() const override { return 90; }
    CPhotoList* GetPhotoList() override { return list; }
    void Invalidate() override { ++invalidations; }
    void InvalidateTile(int) override {}
    void BringToTop() override { ++raised; }
    CPhoto* GetCurrentPhoto() override { return current; }
    BitmapRecycler* GetBitmapRecycler() override { return recycler; }

    Size screen{1024, 768};
    Size thumb{120, 88};
    CPhotoList* list = nullptr;
    CPhoto* current = nullptr;
    BitmapRecycler* recycler = nullptr;
    int invalidations = 0;
    int raised = 0;
};

class ScriptedPrompt final : public IPrompt {
public:
    PromptAnswer Ask(const UiText& text, PromptIcon icon, PromptButtons, PromptAnswer answer,
                     const UiText& title) override {
        texts.push_back(RenderUiText(text));
        titles.push_back(RenderUiText(title));
        icons.push_back(icon);
        return answer;
    }
    std::vector<std::string> texts, titles;
    std::vector<PromptIcon> icons;
};

// Writes a noisy JPEG of that size and gives its path.
inline std::string WritePhoto(const TempDir& dir, const std::string& name, int w, int h,
                              std::uint32_t seed = 1) {
    TestJpegOptions o;
    o.width = w;
    o.height = h;
    o.pattern = Pattern::Noise;
    o.seed = seed;
    o.quality = 90;
    WriteFile(dir.File(name), MakeJpeg(o));
    return dir.File(name);
}

// The file decoded at full size.
inline Bitmap Decoded(const std::string& path) {
    Bitmap b;
    std::string error;
    DecodeJpegFile(path, Size{0, 0}, b, error);
    return b;
}

} // namespace tivox::test
