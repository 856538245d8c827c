#include "SafeSVG_p.h"

#include "ImageSizeProbe.h"

#include <QBuffer>
#include <QHash>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <iterator>
#include <vector>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr int kDeepestNesting = 200;
constexpr qsizetype kMostElements = 200'000;
/// What all references together may unfold into.
constexpr qint64 kMostDrawnElements = 500'000;
/// All embedded pictures together. Units: pixels.
constexpr qint64 kMostEmbeddedPixels = 64 * 1024 * 1024;

/// Elements that move, run or embed something.
constexpr QLatin1StringView kDropped[] = {
    "script"_L1,   "foreignObject"_L1, "iframe"_L1,           "object"_L1,  "embed"_L1,
    "audio"_L1,    "video"_L1,         "animation"_L1,        "animate"_L1, "animateColor"_L1,
    "set"_L1,      "animateMotion"_L1, "animateTransform"_L1, "handler"_L1, "listener"_L1,
    "prefetch"_L1, "discard"_L1,
};

constexpr QStringView kSVGNamespace = u"http://www.w3.org/2000/svg";
constexpr QStringView kXLinkNamespace = u"http://www.w3.org/1999/xlink";
constexpr QStringView kXMLNamespace = u"http://www.w3.org/XML/1998/namespace";

/// What is kept of an element: where it stands and what it refers to.
struct Element
{
    int parent = -1;
    bool hasLink = false;
    QString reference;
};

class Sanitizer
{
public:
    explicit Sanitizer(const QByteArray &svg)
        : m_reader(svg)
        , m_writer(&m_written)
    {
    }

    std::optional<QByteArray> run(QString *reason)
    {
        copy();
        if (m_reason.isEmpty() && m_reader.hasError()) {
            m_reason = m_reader.errorString();
        }
        if (m_reason.isEmpty() && m_elements.empty()) {
            m_reason = u"it has no element"_s;
        }
        if (m_reason.isEmpty() && drawnElements() > kMostDrawnElements) {
            m_reason = u"its references unfold into too much"_s;
        }
        if (!m_reason.isEmpty()) {
            *reason = m_reason;
            return std::nullopt;
        }
        return m_written;
    }

private:
    void copy()
    {
        while (m_reason.isEmpty() && !m_reader.atEnd()) {
            switch (m_reader.readNext()) {
            case QXmlStreamReader::StartElement:
                startElement();
                break;
            case QXmlStreamReader::EndElement:
                m_writer.writeEndElement();
                m_open.pop_back();
                break;
            case QXmlStreamReader::Characters:
                m_writer.writeCharacters(m_reader.text().toString());
                break;
            default:
                break; // comments, instructions and declarations draw nothing
            }
        }
    }

    void startElement()
    {
        const QStringView name = m_reader.name();
        const QStringView space = m_reader.namespaceUri();
        const bool isForeign = !space.isEmpty() && space != kSVGNamespace;
        const bool isDropped =
            isForeign || std::find(std::begin(kDropped), std::end(kDropped), name) != std::end(kDropped);
        if (isDropped || (name == "image"_L1 && !isEmbeddedPicture())) {
            m_reader.skipCurrentElement();
            return;
        }
        if (static_cast<int>(m_open.size()) >= kDeepestNesting) {
            m_reason = u"it nests too deeply"_s;
            return;
        }
        if (static_cast<qsizetype>(m_elements.size()) >= kMostElements) {
            m_reason = u"it has too many elements"_s;
            return;
        }
        const int index = static_cast<int>(m_elements.size());
        Element element;
        element.parent = m_open.empty() ? -1 : m_open.back();
        m_writer.writeStartElement(name.toString());
        if (index == 0) {
            m_writer.writeAttribute(u"xmlns"_s, kSVGNamespace.toString());
            m_writer.writeAttribute(u"xmlns:xlink"_s, kXLinkNamespace.toString());
        }
        for (const QXmlStreamAttribute &attribute : m_reader.attributes()) {
            copyAttribute(attribute, index, &element);
        }
        m_elements.push_back(std::move(element));
        m_open.push_back(index);
    }

    /// Names are written with the prefixes that the renderer looks for, whatever the file calls them.
    void copyAttribute(const QXmlStreamAttribute &attribute, int index, Element *element)
    {
        const QStringView value = attribute.value();
        const QStringView space = attribute.namespaceUri();
        if (attribute.name() == "href"_L1 && (space.isEmpty() || space == kXLinkNamespace)) {
            // Newer files give the same link twice, with and without the prefix.
            if (isSafeLink(value) && !element->hasLink) {
                element->hasLink = true;
                m_writer.writeAttribute(u"xlink:href"_s, value.toString());
                element->reference = value.startsWith(u'#') ? value.sliced(1).trimmed().toString() : QString();
            }
            return;
        }
        const bool isXML = space == kXMLNamespace;
        if ((!space.isEmpty() && !isXML) || attribute.name().startsWith("on"_L1)) {
            return;
        }
        if (attribute.name() == "id"_L1) {
            m_indexes.insert(value.toString(), index);
        }
        m_writer.writeAttribute((isXML ? u"xml:"_s : QString()) + attribute.name(), value.toString());
    }

    static bool isSafeLink(QStringView link) { return link.startsWith(u'#') || link.startsWith("data:"_L1); }

    /// Whether the current image element holds its pixels itself, and not too many.
    bool isEmbeddedPicture()
    {
        for (const QXmlStreamAttribute &attribute : m_reader.attributes()) {
            if (attribute.name() != "href"_L1) {
                continue;
            }
            const QStringView link = attribute.value();
            const qsizetype comma = link.indexOf(u',');
            if (!link.startsWith("data:"_L1) || comma < 0 || !link.first(comma).endsWith("base64"_L1)) {
                return false;
            }
            QByteArray bytes = QByteArray::fromBase64(link.sliced(comma + 1).toLatin1());
            QBuffer buffer(&bytes);
            const auto size = buffer.open(QIODevice::ReadOnly) ? pixelSizeOfImage(buffer) : std::nullopt;
            if (!size || size->width > kMostEmbeddedPixels / size->height) {
                return false;
            }
            m_embeddedPixels += size->width * size->height;
            return m_embeddedPixels <= kMostEmbeddedPixels;
        }
        return false;
    }

    /// What is drawn when every reference is followed: the elements plus, for each that refers to another, what that
    /// one draws. More than the bound where the references make a circle.
    qint64 drawnElements()
    {
        const auto count = static_cast<int>(m_elements.size());
        // Children stand behind their parents, so one sweep from the end adds up what each element holds. What it
        // refers to may stand anywhere and counts as the sweep before found it, so sweeps go on until nothing grows:
        // one for each link of the longest chain of references. A circle never ends, or grows beyond the bound.
        std::vector<qint64> costs(m_elements.size(), 1);
        constexpr int kLongestChain = 64;
        for (int sweep = 0; sweep < kLongestChain; ++sweep) {
            std::vector<qint64> next(m_elements.size(), 1);
            for (int i = count - 1; i >= 0; --i) {
                const Element &element = m_elements[static_cast<size_t>(i)];
                qint64 &own = next[static_cast<size_t>(i)];
                const auto target = m_indexes.constFind(element.reference);
                if (!element.reference.isEmpty() && target != m_indexes.cend()) {
                    own += costs[static_cast<size_t>(*target)];
                }
                if (own > kMostDrawnElements) {
                    return own;
                }
                if (element.parent >= 0) {
                    next[static_cast<size_t>(element.parent)] += own;
                }
            }
            if (next == costs) {
                return costs.front();
            }
            costs = std::move(next);
        }
        return kMostDrawnElements + 1;
    }

    QXmlStreamReader m_reader;
    QByteArray m_written;
    QXmlStreamWriter m_writer;
    QString m_reason;
    std::vector<Element> m_elements;
    std::vector<int> m_open;
    QHash<QString, int> m_indexes;
    qint64 m_embeddedPixels = 0;
};

} // namespace

std::optional<QByteArray> safeSVG(const QByteArray &svg, QString *reason)
{
    return Sanitizer(svg).run(reason);
}

} // namespace quib
