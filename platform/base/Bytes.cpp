#include "Bytes.h"

#include <QStringDecoder>

namespace {

constexpr char16_t escapeBase = 0xDC00;

bool isEscapedByte(const QString& text, qsizetype at) {
    const char16_t unit = text.at(at).unicode();
    const bool paired = at > 0 && text.at(at - 1).isHighSurrogate();
    return unit >= escapeBase + 0x80 && unit <= escapeBase + 0xFF && !paired;
}

/// Length of the UTF-8 sequence that `lead` announces, 1 for a byte that leads none.
int sequenceLength(uchar lead) {
    if (lead >= 0xF0)
        return 4;
    if (lead >= 0xE0)
        return 3;
    return lead >= 0xC0 ? 2 : 1;
}

bool decodeValid(const QByteArray& bytes, QString& text) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless |
                                                     QStringDecoder::Flag::ConvertInitialBom);
    text = decoder.decode(bytes);
    return !decoder.hasError();
}

} // namespace

QString fromBytes(const QByteArray& bytes) {
    QString text;
    if (decodeValid(bytes, text))
        return text;
    text.clear();
    for (qsizetype at = 0; at < bytes.size();) {
        const uchar lead = static_cast<uchar>(bytes.at(at));
        const QByteArray sequence = bytes.mid(at, sequenceLength(lead));
        QString decoded;
        if (decodeValid(sequence, decoded)) {
            text += decoded;
            at += sequence.size();
        } else {
            text += QChar(escapeBase + lead);
            ++at;
        }
    }
    return text;
}

QByteArray toBytes(const QString& text) {
    QByteArray bytes;
    qsizetype done = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (!isEscapedByte(text, at))
            continue;
        bytes += QStringView(text).mid(done, at - done).toUtf8();
        bytes += static_cast<char>(text.at(at).unicode() - escapeBase);
        done = at + 1;
    }
    return bytes + QStringView(text).mid(done).toUtf8();
}
