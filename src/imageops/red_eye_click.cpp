#include "imageops/red_eye_click.h"

#include <cstdint>

#include "imageops/red_eye_fixer.h"
#include "photos/photo.h"

namespace tivox {

bool RedEyeClick(CPhoto& photo, Size screen, Point click) {
    // The sizes of the last load: a working image that shows a crop or a
    // resize is mapped as if it showed the whole picture.
    const Size working = photo.screenSize;
    const Size source = photo.sourceSize;
    if (!photo.screenImage || working.width <= 0 || working.height <= 0)
        return false;
    const int mx = (screen.width - working.width) >> 1;
    const int my = (screen.height - working.height) >> 1;
    const int x = click.x - mx, y = click.y - my;
    photo.edits.AddRedEyePoint(Point{int(std::int64_t(source.width) * x / working.width),
                                     int(std::int64_t(source.height) * y / working.height)});
    CRedEyeFixer fixer(kRedEyeRadiusClick);
    fixer.SetImage(photo.screenImage.get());
    fixer.Fix(x, y);
    return true;
}

} // namespace tivox
