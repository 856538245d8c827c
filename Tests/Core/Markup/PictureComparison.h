#pragma once

#include <Graphics/NSImage.h>

#include <string>

namespace quib::tests {

/// How far two pictures of one page are apart, told in a way that does not see how a font's outlines fall on the
/// pixels: whole cells are compared, not pixels.
struct PictureDifference
{
    /// The side of a cell. Units: pixels.
    static constexpr int kCell = 16;
    /// What two pictures may differ by and still show the same. Units: of 255, of one colour component. A page whose
    /// text is moved by a quarter of a pixel stays at half of them; what a page can lose is seen from 9 on.
    static constexpr double kMostMean = 0.4;
    static constexpr double kMostLocal = 6;

    /// The sizes differ: nothing else was compared.
    bool isOtherSize = false;
    /// Over all cells.
    double mean = 0;
    /// Of the cell that differs most, and where it lies. Units of the place: pixels.
    double local = 0;
    int x = 0;
    int y = 0;

    [[nodiscard]] bool isTolerable() const { return !isOtherSize && mean <= kMostMean && local <= kMostLocal; }
    [[nodiscard]] std::string inWords() const;
};

[[nodiscard]] PictureDifference differenceOfPictures(const NSImage &a, const NSImage &b);

} // namespace quib::tests
