// Loads generated gallery pages in a real browser (headless chromium, kept
// off the network) and asks it whether every picture loaded and every link
// leads to a page that exists.

#include <gtest/gtest.h>

#include <filesystem>

#include "gallery_test_support.h"

namespace tivox {
namespace {

using test::CommandRun;
using test::ShellQuote;

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
           std::to_string(pages.size()) + R"(;
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
        for (const char* name : {"chromium", "chromium-browser"}) {
            const CommandRun run = test::Capture(std::string("command -v ") + name);
            if (run.exitCode == 0 && !run.output.empty())
                m_binary = run.output.substr(0, run.output.find('\n'));
        }
        if (m_binary.empty())
            GTEST_SKIP() << "chromium is not installed (./test installs it); browser check skipped";
        const CommandRun blank = DumpDom("about:blank");
        if (blank.exitCode != 0 || blank.output.find("<body>") == std::string::npos)
            GTEST_SKIP() << "chromium cannot start here (exit " << blank.exitCode << ")";
    }

    // A fresh profile and every background service that would reach the
    // network turned off.
    CommandRun DumpDom(const std::string& url) const {
        return test::Capture(
            "timeout 90 " + ShellQuote(m_binary) +
            " --headless --no-sandbox --disable-gpu --disable-quic --no-first-run "
            "--disable-background-networking --disable-component-update --disable-sync "
            "--allow-file-access-from-files --user-data-dir=" +
            ShellQuote(m_profile.path()) + " --dump-dom " + ShellQuote(url) + " 2>/dev/null");
    }

    // Writes the probe beside (not into) the gallery, loads it and gives the
    // result element only: the script itself holds the words it prints.
    std::string Probe(const std::string& gallery, const std::vector<std::string>& pages) {
        const std::string html = ProbePage("file://" + gallery + "/", pages);
        test::WriteFile(m_probeDir.File("probe.html"), test::Bytes(html.begin(), html.end()));
        const CommandRun run = DumpDom("file://" + m_probeDir.File("probe.html"));
        EXPECT_EQ(run.exitCode, 0);
        const auto start = run.output.find("<pre id=\"result\">");
        const auto end = run.output.find("</pre>");
        return start == std::string::npos || end == std::string::npos
                   ? "no result element in:\n" + run.output
                   : run.output.substr(start, end - start);
    }

    std::string m_binary;
    test::TempDir m_profile, m_probeDir;
};

// The whole way: photos decoded, scaled and written by tivox-batch gallery,
// pages written, then shown by the browser.
TEST_F(GalleryInBrowser, EveryPictureLoadsAndEveryLinkLeadsToAPage) {
    test::TempDir dir;
    std::vector<std::string> names = test::NumberedNames(18);
    names.insert(names.end(), {"a b#1?.jpg", "R&D \"<x>\" 100%.jpg"});
    const std::string photos = dir.File("photos"), web = dir.File("web");
    std::filesystem::create_directories(photos);
    const test::TestJpegOptions options = test::Picture(320, 240);
    for (const auto& name : names)
        ASSERT_TRUE(test::WriteFile(photos + "/" + name, test::MakeJpeg(options)));
    const CommandRun made =
        test::RunBatch({"gallery", "--photos", photos, "--out", web, "--title", "Browser & <Test>",
                        "--photo", "160x120", "--thumb", "40x30"});
    ASSERT_EQ(made.exitCode, 0) << made.output;

    std::string result =
        Probe(web, {"thumbs1.html", "thumbs2.html", "photo1.html", "photo19.html", "photo20.html"});
    EXPECT_NE(result.find("DONE"), std::string::npos) << result;
    EXPECT_EQ(test::CountOf(result, "FAIL"), 0) << result;
    // Both navigation rows link forward on the first page, 16 thumbnails link
    // to photo pages; the last thumbnail page holds the two special names.
    for (const char* page :
         {"PAGE thumbs1.html images=16 links=20", "PAGE thumbs2.html images=4 links=8",
          "PAGE photo19.html images=1 links=6", "PAGE photo20.html images=1 links=4"})
        EXPECT_NE(result.find(page), std::string::npos) << result;

    // The probe itself must see a missing picture and a dead link.
    std::filesystem::remove(web + "/pics/thumbs/IMG_0002.jpg");
    std::filesystem::remove(web + "/photo2.html");
    result = Probe(web, {"thumbs1.html"});
    EXPECT_NE(result.find("picture not loaded: pics/thumbs/IMG_0002.jpg"), std::string::npos)
        << result;
    EXPECT_NE(result.find("link leads nowhere: photo2.html"), std::string::npos) << result;
}

} // namespace
} // namespace tivox
