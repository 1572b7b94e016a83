#include "SafeSvg.h"

#include <QSet>
#include <QXmlStreamReader>

#include <algorithm>

namespace {

constexpr qsizetype largestText = 64 * 1024;
constexpr qsizetype longestDrawing = 16 * 1024; // of all points and paths
constexpr int deepestNesting = 32;
constexpr int mostElements = 1000;

const QSet<QString> elements = {
    "circle", "defs", "desc", "ellipse", "g", "line", "linearGradient", "metadata", "path",
    "polygon", "polyline", "rect", "stop", "svg", "title", "radialGradient",
    // What drawing programs write about a picture, and Qt passes over.
    "Agent", "RDF", "Work", "creator", "date", "format", "grid", "namedview", "type"};

const QSet<QString> attributes = {
    // of a shape
    "cx", "cy", "d", "height", "points", "r", "rx", "ry", "transform", "width", "x", "x1", "x2",
    "y", "y1", "y2",
    // of its look
    "color", "display", "fill", "fill-opacity", "fill-rule", "opacity", "overflow", "stroke",
    "stroke-dashoffset", "stroke-linecap", "stroke-linejoin", "stroke-miterlimit", "stroke-opacity",
    "stroke-width", "visibility",
    // of a gradient
    "fx", "fy", "gradientTransform", "gradientUnits", "offset", "spreadMethod", "stop-color",
    "stop-opacity",
    // of the document
    "baseProfile", "class", "id", "preserveAspectRatio", "version", "viewBox", "xmlns"};

/// A property that is not known does no harm where it is switched off, as drawing programs write
/// many of them.
bool isSafeProperty(const QString& name, const QString& value) {
    static const QSet<QString> off = {"none", "normal", "auto"};
    if (value.contains("url(") && !value.contains("url(#"))
        return false;
    return attributes.contains(name) || off.contains(value);
}

/// The declarations of a `style`. An escape could hide a name, and so could a comment.
bool isSafeStyle(const QString& style) {
    if (style.contains('\\') || style.contains('@') || style.contains("/*"))
        return false;
    const QStringList declarations = style.split(';', Qt::SkipEmptyParts);
    return std::all_of(declarations.begin(), declarations.end(), [](const QString& declaration) {
        const QString name = declaration.section(':', 0, 0).trimmed();
        return isSafeProperty(name, declaration.section(':', 1).trimmed());
    });
}

/// Names with a prefix are those of drawing programs, and mean nothing to Qt, but for links.
bool isSafeAttribute(const QXmlStreamAttribute& attribute) {
    const QString name = attribute.qualifiedName().toString();
    const QString value = attribute.value().toString().trimmed();
    if (name == "href" || name.endsWith(":href"))
        return value.startsWith('#');
    if (name == "style")
        return isSafeStyle(value);
    return name.contains(':') || isSafeProperty(name, value);
}

bool isSafeElement(QStringView name, const QXmlStreamAttributes& found) {
    return elements.contains(name.toString()) &&
           std::all_of(found.begin(), found.end(), isSafeAttribute);
}

qsizetype drawingLength(const QXmlStreamAttributes& found) {
    return found.value("d").size() + found.value("points").size();
}

} // namespace

bool isSafeSvg(const QByteArray& text) {
    if (text.size() > largestText)
        return false;
    QXmlStreamReader reader(text);
    reader.setNamespaceProcessing(false); // as Qt reads the picture
    int depth = 0;
    int count = 0;
    qsizetype drawing = 0;
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement:
            drawing += drawingLength(reader.attributes());
            if (++depth > deepestNesting || ++count > mostElements || drawing > longestDrawing ||
                !isSafeElement(reader.name(), reader.attributes()))
                return false;
            break;
        case QXmlStreamReader::EndElement:
            --depth;
            break;
        case QXmlStreamReader::ProcessingInstruction:
        case QXmlStreamReader::EntityReference:
            return false;
        case QXmlStreamReader::DTD:
            if (reader.text().contains(u'['))
                return false;
            break;
        default:
            break;
        }
    }
    return !reader.hasError();
}
