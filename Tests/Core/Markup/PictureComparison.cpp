#include "PictureComparison.h"

#include <algorithm>
#include <cmath>

namespace quib::tests {

std::string PictureDifference::inWords() const
{
    if (isOtherSize) {
        return "the sizes differ";
    }
    return "mean " + std::to_string(mean) + " (at most " + std::to_string(kMostMean) + "), local " +
           std::to_string(local) + " (at most " + std::to_string(kMostLocal) + ") at " + std::to_string(x) + ", " +
           std::to_string(y);
}

PictureDifference differenceOfPictures(const NSImage &a, const NSImage &b)
{
    PictureDifference difference;
    if (a.pixelSize() != b.pixelSize()) {
        difference.isOtherSize = true;
        return difference;
    }
    constexpr int kCell = PictureDifference::kCell;
    const QSize cells((a.pixelSize().width() + kCell - 1) / kCell, (a.pixelSize().height() + kCell - 1) / kCell);
    const NSImage ofA = a.imageScaledToPixelSize(cells);
    const NSImage ofB = b.imageScaledToPixelSize(cells);
    double sum = 0;
    for (int y = 0; y < cells.height(); ++y) {
        for (int x = 0; x < cells.width(); ++x) {
            const NSColor one = ofA.colorAt(x, y);
            const NSColor other = ofB.colorAt(x, y);
            const double here = 255 * std::max({std::abs(one.redComponent() - other.redComponent()),
                                                std::abs(one.greenComponent() - other.greenComponent()),
                                                std::abs(one.blueComponent() - other.blueComponent()),
                                                std::abs(one.alphaComponent() - other.alphaComponent())});
            sum += here;
            if (here > difference.local) {
                difference.local = here;
                difference.x = x * kCell;
                difference.y = y * kCell;
            }
        }
    }
    difference.mean = sum / (static_cast<double>(cells.width()) * cells.height());
    return difference;
}

} // namespace quib::tests
