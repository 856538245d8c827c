#include "QBImageAlphaTrimmer.h"

#include <algorithm>

NSImage QBImageAlphaTrimmer::trimImage(const NSImage &image, std::optional<int> horizontalMargin)
{
    const QRect opaque = image.opaqueBounds();
    const QSize size = image.pixelSize();
    if (opaque.isEmpty()) {
        return image;
    }
    int left = 0;
    int right = size.width();
    if (horizontalMargin) {
        const int margin = std::clamp(*horizontalMargin, 0, size.width());
        left = std::max(opaque.x() - margin, 0);
        right = std::min(opaque.x() + opaque.width() + margin, size.width());
    }
    const QRect kept(left, opaque.y(), right - left, opaque.height());
    return kept == QRect({0, 0}, size) ? image : image.imageCroppedToPixelRect(kept);
}
