// The generated camera card.

#include "make_card/sample_card.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "photo_writer/test_jpeg.h"

namespace tivox {

namespace {

// The photos are made by the same writer the tests use for theirs.
using test::ByteOrder;
using test::Bytes;
using test::CameraExif;
using test::CameraExifPayload;
using test::MakeJpeg;
using test::Pattern;
using test::Picture;
using test::SmallJpeg;
using test::TestJpegOptions;
using test::WriteFile;

constexpr const char* kFolder = "DCIM/100TIVOX";

// "2004:04:23 15:00:53" plus the given seconds, within one day's clock.
std::string ShotTime(int seconds) {
    const int base = 15 * 3600 + 0 * 60 + 53;
    int t = base + seconds;
    const int day = 23 + t / 86400;
    t %= 86400;
    char text[32];
    std::snprintf(text, sizeof(text), "2004:04:%02d %02d:%02d:%02d", day % 100, t / 3600,
                  t / 60 % 60, t % 60);
    return text;
}

struct PhotoPlan {
    TestJpegOptions options;
    std::string description;
};

PhotoPlan PlanPhoto(int index) {
    PhotoPlan plan;
    TestJpegOptions& o = plan.options;
    o = Picture(320, 240, index % 3 == 0 ? Pattern::Checker : Pattern::Gradient);
    o.seed = std::uint32_t(index);

    CameraExif exif;
    exif.order = index % 2 == 0 ? ByteOrder::Big : ByteOrder::Little;
    exif.pixelWidth = 320;
    exif.pixelHeight = 240;
    // Photos 2 and 3 are shot in the same second.
    exif.dateTimeOriginal = ShotTime(67 * (index == 3 ? 1 : index - 1));
    std::string special;
    if (index == 3)
        special = ", same second as IMG_0002";
    if (index == 5) {
        exif.dateTimeOriginal.clear();
        special = ", no DateTimeOriginal";
    }
    if (index == 6) {
        exif.orientation = 6;
        exif.thumbnail = SmallJpeg(160, 120);
        special = ", orientation 6, thumbnail";
    }
    const char* order = exif.order == ByteOrder::Big ? "MM" : "II";
    if (index == 4) {
        plan.description = "no EXIF";
        return plan;
    }
    o.exif = CameraExifPayload(exif);
    plan.description = "EXIF " + std::string(order) +
                       (exif.dateTimeOriginal.empty() ? "" : ", " + exif.dateTimeOriginal) +
                       special;
    return plan;
}

bool Write(const std::string& root, const std::string& relative, const Bytes& bytes,
           const std::string& description, std::vector<CardFile>& written, std::string& error) {
    if (bytes.empty()) {
        error = "could not encode " + relative;
        return false;
    }
    const std::string path = root + "/" + relative;
    if (!WriteFile(path, bytes)) {
        error = "cannot write " + path + ": " + std::strerror(errno);
        return false;
    }
    written.push_back({relative, description});
    return true;
}

} // namespace

bool WriteSampleCard(const std::string& root, int photos, std::vector<CardFile>& written,
                     std::string& error) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::path(root) / kFolder;
    std::error_code ec;
    if (fs::exists(folder, ec)) {
        error = folder.string() + " exists already; nothing was written";
        return false;
    }
    fs::create_directories(folder, ec);
    if (ec) {
        error = "cannot create " + folder.string() + ": " + ec.message();
        return false;
    }

    const std::string dir = kFolder + std::string("/");
    for (int i = 1; i <= photos; ++i) {
        char name[32];
        std::snprintf(name, sizeof(name), "IMG_%04d.JPG", i);
        const PhotoPlan plan = PlanPhoto(i);
        if (!Write(root, dir + name, MakeJpeg(plan.options), plan.description, written, error))
            return false;
    }

    TestJpegOptions other;
    other.width = 200;
    other.height = 150;
    other.pattern = Pattern::Noise;
    CameraExif exif;
    exif.dateTimeOriginal = ShotTime(3600);
    other.exif = CameraExifPayload(exif);
    const std::string text = "This is no photo, only a text with a .JPG name.\n";
    const Bytes avi = {'R', 'I', 'F', 'F', 4, 0, 0, 0, 'A', 'V', 'I', ' '};
    return Write(root, dir + "IMG_9001.JPEG", MakeJpeg(other),
                 "EXIF II, " + exif.dateTimeOriginal + ", .JPEG extension", written, error) &&
           Write(root, dir + "BROKEN.JPG", Bytes(text.begin(), text.end()), "not a JPEG", written,
                 error) &&
           Write(root, dir + "MVI_0001.AVI", avi, "a movie, not a photo", written, error);
}

} // namespace tivox
