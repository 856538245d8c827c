// HEIC: a file of several pictures and parts of pictures, with properties that they share.

#include "ImageSizeProbe_p.h"

#include <QHash>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace quib {

namespace {

/// How long the tables of properties that are read may be in all. Units: bytes.
constexpr qint64 kLongestTables = qint64{1} << 20;

/// The properties of pictures that bear on the size, by their place in the list, from 1 on.
using Properties = QHash<int, std::pair<QByteArray, QByteArray>>;

Properties propertiesInList(Source &source, const Box &list, int *pieces)
{
    Properties properties;
    qint64 offset = list.body;
    int place = 0;
    while (const auto box = takeBox(source, &offset, list.limit, pieces)) {
        ++place;
        // Their lengths, each with its version and flags where it has such.
        const int length = box->type == "ispe" ? 12 : box->type == "clap" ? 32 : box->type == "irot" ? 1 : 0;
        const QByteArray content =
            length > 0 && box->limit - box->body >= length ? source.at(box->body, length) : QByteArray();
        if (!content.isEmpty()) {
            properties.insert(place, {box->type, content});
        }
    }
    return properties;
}

/// The places of the properties of one item, in the order in which they apply.
std::vector<int> placesOfItem(const QByteArray &table, quint32 item)
{
    std::vector<int> places;
    const bool hasWideItems = little<quint8>(table, 0) != 0;
    const bool hasWidePlaces = (little<quint8>(table, 3) & 1) != 0;
    const auto count = big<quint32>(table, 4);
    qsizetype offset = 8;
    for (quint32 i = 0; i < count && offset < table.size(); ++i) {
        const quint32 entry = hasWideItems ? big<quint32>(table, offset) : big<quint16>(table, offset);
        offset += hasWideItems ? 4 : 2;
        const int associations = little<quint8>(table, offset++);
        const qsizetype size = hasWidePlaces ? 2 : 1;
        for (int k = 0; k < associations && entry == item; ++k) {
            // The highest bit tells whether the property is essential.
            places.push_back(hasWidePlaces ? big<quint16>(table, offset + size * k) & 0x7FFF
                                           : little<quint8>(table, offset + size * k) & 0x7F);
        }
        offset += size * associations;
    }
    return places;
}

/// The part of a side that a clean aperture leaves: its length and the distance of its middle from the picture's, both
/// as fractions. It begins and ends at whole pixels within the picture.
qint64 cutSide(qint64 side, const QByteArray &aperture, qsizetype lengthPlace, qsizetype distancePlace)
{
    const auto lengthParts = big<quint32>(aperture, lengthPlace + 4);
    const auto distanceParts = big<quint32>(aperture, distancePlace + 4);
    if (lengthParts == 0 || distanceParts == 0) {
        return 0;
    }
    const double length = static_cast<double>(big<quint32>(aperture, lengthPlace)) / lengthParts;
    const double distance = static_cast<double>(big<qint32>(aperture, distancePlace)) / distanceParts;
    const double first = distance + (static_cast<double>(side) - 1) / 2 - (length - 1) / 2;
    const double last = first + length - 1;
    const double wholeFirst = std::max(0.0, std::floor(first));
    const double wholeLast = std::min(static_cast<double>(side) - 1, std::floor(last));
    return wholeLast < wholeFirst ? 0 : static_cast<qint64>(wholeLast - wholeFirst) + 1;
}

} // namespace

std::optional<PixelSize> sizeOfHEIC(Source &source)
{
    // 1. The boxes that tell of pictures.
    int pieces = 0;
    std::optional<quint32> primary;
    Properties properties;
    std::vector<QByteArray> tables;
    qint64 room = kLongestTables;
    qint64 offset = 0;
    auto meta = takeBox(source, &offset, source.size(), &pieces);
    while (meta && meta->type != "meta") {
        meta = takeBox(source, &offset, source.size(), &pieces);
    }
    qint64 inMeta = meta ? meta->body + 4 : 0;
    while (const auto box = meta ? takeBox(source, &inMeta, meta->limit, &pieces) : std::nullopt) {
        if (box->type == "pitm") {
            const QByteArray content = source.at(box->body, std::min<qint64>(box->limit - box->body, 8));
            primary = content.startsWith('\0') ? big<quint16>(content, 4) : big<quint32>(content, 4);
        }
        qint64 inProperties = box->body;
        while (const auto part =
                   box->type == "iprp" ? takeBox(source, &inProperties, box->limit, &pieces) : std::nullopt) {
            if (part->type == "ipco") {
                properties = propertiesInList(source, *part, &pieces);
            } else if (part->type == "ipma") {
                const qint64 length = std::min(part->limit - part->body, room);
                room -= length;
                tables.push_back(source.at(part->body, length));
            }
        }
    }
    if (!primary) {
        return std::nullopt;
    }
    // 2. What its properties make of the picture that the file is there for.
    std::optional<PixelSize> size;
    for (const QByteArray &table : tables) {
        for (const int place : placesOfItem(table, *primary)) {
            const auto &[type, content] = properties.value(place);
            if (type == "ispe") {
                size = checked(big<quint32>(content, 4), big<quint32>(content, 8));
            } else if (size && type == "clap") {
                size = checked(cutSide(size->width, content, 0, 16), cutSide(size->height, content, 8, 24));
            } else if (size && type == "irot" && (little<quint8>(content, 0) & 1) != 0) {
                size = PixelSize{size->height, size->width};
            }
        }
    }
    return size;
}

} // namespace quib
