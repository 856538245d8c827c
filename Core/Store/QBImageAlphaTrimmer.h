#pragma once

#include <Graphics/NSImage.h>

#include <optional>

/// Takes the wholly transparent edges off a picture: what surrounds a drawing on an empty page.
class QBImageAlphaTrimmer
{
public:
    QBImageAlphaTrimmer() = delete;

    /// Without the transparent rows at the top and at the bottom; with a margin, without the transparent columns at the
    /// sides too, but for so many. A picture that is transparent all over stays as it is.
    /// Units: pixels.
    [[nodiscard]] static NSImage trimImage(const NSImage &image, std::optional<int> horizontalMargin);
};
