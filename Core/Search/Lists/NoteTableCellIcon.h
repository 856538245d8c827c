#pragma once

#include <Text/NSTextAttachment.h>

namespace quib {

/// A small picture in a row's text. Who draws the row knows the pictures, and takes the colour from the text.
class NoteTableCellIcon : public NSTextAttachment
{
public:
    enum class Picture : quint8
    {
        Pin,
        Conflict,
    };

    explicit NoteTableCellIcon(Picture picture)
        : m_picture(picture)
    {
    }
    [[nodiscard]] Picture picture() const { return m_picture; }

private:
    Picture m_picture;
};

} // namespace quib
