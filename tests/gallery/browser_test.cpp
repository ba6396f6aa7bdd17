// Loads generated gallery pages in a real browser (headless chromium, kept
// off the network) and asks it whether every picture loaded and every link
// leads to a page that exists.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "gallery/gallery_writer.h"
#include "gallery_test_support.h"
#include "support/test_jpeg.h"

namespace tivox {
namespace {

using test::CountOf;
using test::ScriptedPrompt;
using test::TempDir;

using test::Capture;
using test::CommandRun;
using test::ShellQuote;

std::string FindChromium() {
    for (const char* name : {"chromium", "chromium-browser"}) {
        const CommandRun run = Capture(std::string("command -v ") + name + " 2>/dev/null");
        if (run.exitCode == 0 && !run.output.empty())
            return run.output.substr(0, run.output.find('\n'));
    }
    return {};
}

// A headless browser with its own empty profile and every background
// service that would reach the network turned off.
class HeadlessBrowser {
public:
    explicit HeadlessBrowser(std::string binary) : m_binary(std::move(binary)) {}

    CommandRun DumpDom(const std::string& url) const {
        return Capture("timeout 90 " + ShellQuote(m_binary) +
                       " --headless --no-sandbox --disable-gpu --disable-quic --no-first-run "
                       "--disable-background-networking --disable-component-update "
                       "--disable-sync --allow-file-access-from-files --user-data-dir=" +
                       ShellQuote(m_profile.path()) + " --dump-dom " + ShellQuote(url) +
                       " 2>/dev/null");
    }

private:
    std::string m_binary;
    TempDir m_profile;
};

// The probe page: each gallery page in a frame; when a frame has loaded, its
// pictures must be complete with a natural size, and every link target must
// be readable. One line per page or fault goes into the result element.
std::string ProbePage(const std::string& galleryUrl, const std::vector<std::string>& pages) {
    std::string frames;
    for (const auto& page : pages)
        frames += "<iframe src=\"" + galleryUrl + page + "\" onload=\"check(this, '" + page +
                  "')\"></iframe>\n";
    return R"(<html><body><pre id="result"></pre>
<script>
let pending = )" +
           std::to_string(pages.size()) +
           R"(;
function say(line) { document.getElementById('result').textContent += line + '\n'; }
function check(frame, name) {
  const doc = frame.contentDocument;
  if (!doc) { say('FAIL ' + name + ': page not readable'); return; }
  let images = 0, links = 0;
  for (const img of doc.images) {
    images++;
    if (!img.complete || img.naturalWidth === 0)
      say('FAIL ' + name + ': picture not loaded: ' + img.getAttribute('src'));
  }
  for (const a of doc.querySelectorAll('a[href]')) {
    links++;
    try {
      const xhr = new XMLHttpRequest();
      xhr.open('GET', a.href, false);
      xhr.send();
      if (xhr.responseText.length === 0) throw new Error('empty');
    } catch (e) {
      say('FAIL ' + name + ': link leads nowhere: ' + a.getAttribute('href'));
    }
  }
  say('PAGE ' + name + ' images=' + images + ' links=' + links);
  if (--pending === 0) say('DONE');
}
</script>
)" + frames +
           "</body></html>\n";
}

class GalleryInBrowser : public testing::Test {
protected:
    void SetUp() override {
        const std::string binary = FindChromium();
        if (binary.empty())
            GTEST_SKIP() << "chromium is not installed (./test installs it); browser check skipped";
        m_browser = std::make_unique<HeadlessBrowser>(binary);
        const CommandRun blank = m_browser->DumpDom("about:blank");
        if (blank.exitCode != 0 || blank.output.find("<body>") == std::string::npos)
            GTEST_SKIP() << "chromium cannot start here (exit " << blank.exitCode
                         << "); browser check skipped";
    }

    // Writes the probe beside (not into) the gallery and loads it.
    CommandRun Probe(const std::string& gallery, const std::vector<std::string>& pages) {
        const std::string html = ProbePage("file://" + gallery + "/", pages);
        test::WriteFile(m_probeDir.File("probe.html"), test::Bytes(html.begin(), html.end()));
        CommandRun run = m_browser->DumpDom("file://" + m_probeDir.File("probe.html"));
        // Only the result element: the script itself holds the words it prints.
        const auto start = run.output.find("<pre id=\"result\">");
        const auto end = run.output.find("</pre>");
        run.output = start == std::string::npos || end == std::string::npos
                         ? "no result element in:\n" + run.output
                         : run.output.substr(start, end - start);
        return run;
    }

    std::unique_ptr<HeadlessBrowser> m_browser;
    TempDir m_probeDir;
};

void MakeRealPictures(const std::string& gallery, const std::vector<std::string>& names) {
    std::filesystem::create_directories(gallery + "/pics/thumbs");
    const test::Bytes photo = test::SmallJpeg(160, 120);
    const test::Bytes thumb = test::SmallJpeg(40, 30);
    for (const auto& name : names) {
        test::WriteFile(gallery + "/pics/" + name, photo);
        test::WriteFile(gallery + "/pics/thumbs/" + name, thumb);
    }
}

// The whole way: photos decoded, scaled and written by tivox-batch gallery,
// pages written, then shown by the browser.
TEST_F(GalleryInBrowser, EveryPictureLoadsAndEveryLinkLeadsToAPage) {
    TempDir dir;
    std::vector<std::string> names = test::NumberedNames(18);
    names.insert(names.end(), {"a b#1?.jpg", "R&D \"<x>\" 100%.jpg"});
    const std::string photos = dir.File("photos");
    std::filesystem::create_directories(photos);
    test::TestJpegOptions options;
    options.width = 320;
    options.height = 240;
    for (const auto& name : names)
        ASSERT_TRUE(test::WriteFile(photos + "/" + name, test::MakeJpeg(options)));
    const std::string web = dir.File("web");
    const CommandRun made =
        test::RunBatch({"gallery", "--photos", photos, "--out", web, "--title", "Browser & <Test>",
                        "--photo", "160x120", "--thumb", "40x30"});
    ASSERT_EQ(made.exitCode, 0) << made.output;

    const CommandRun run =
        Probe(web, {"thumbs1.html", "thumbs2.html", "photo1.html", "photo19.html", "photo20.html"});
    ASSERT_EQ(run.exitCode, 0) << run.output;
    EXPECT_NE(run.output.find("DONE"), std::string::npos) << run.output;
    EXPECT_EQ(CountOf(run.output, "FAIL"), 0) << run.output;
    // Both navigation rows link forward on the first page, 16 thumbnails link
    // to photo pages; the last thumbnail page holds the two special names.
    EXPECT_NE(run.output.find("PAGE thumbs1.html images=16 links=20"), std::string::npos)
        << run.output;
    EXPECT_NE(run.output.find("PAGE thumbs2.html images=4 links=8"), std::string::npos)
        << run.output;
    EXPECT_NE(run.output.find("PAGE photo19.html images=1 links=6"), std::string::npos)
        << run.output;
    EXPECT_NE(run.output.find("PAGE photo20.html images=1 links=4"), std::string::npos)
        << run.output;
}

// The probe itself must see a missing picture and a dead link.
TEST_F(GalleryInBrowser, ProbeReportsMissingPicturesAndDeadLinks) {
    TempDir dir;
    MakeRealPictures(dir.path(), test::NumberedNames(2));
    ScriptedPrompt prompt;
    CGalleryWriter writer(dir.path(), "", {4, 4}, {1, 1}, prompt);
    ASSERT_TRUE(writer.Write());
    std::filesystem::remove(dir.File("pics/thumbs/IMG_0002.jpg"));
    std::filesystem::remove(dir.File("photo2.html"));

    const CommandRun run = Probe(dir.path(), {"thumbs1.html"});
    EXPECT_NE(run.output.find("picture not loaded: pics/thumbs/IMG_0002.jpg"), std::string::npos)
        << run.output;
    EXPECT_NE(run.output.find("link leads nowhere: photo2.html"), std::string::npos) << run.output;
}

} // namespace
} // namespace tivox
