#include "Bytes.h"
#include "support.h"

using namespace Qt::StringLiterals;

TEST(Bytes, AnyByteStringComesBackAsItWas) {
    for (int byte = 0; byte < 256; ++byte) {
        const QByteArray single(1, static_cast<char>(byte));
        EXPECT_EQ(toBytes(fromBytes(single)), single);
    }
}

TEST(Bytes, ValidUtf8IsReadAsItsTextAndEachOtherByteAsALoneSurrogate) {
    for (const auto& [bytes, text] : Rows<QByteArray, QString>{
             {"", u""_s},
             {"a\0b"_ba, u"a\0b"_s},
             {"\xC3\xA9 e\xCC\x81", u"\u00E9 e\u0301"_s},
             {"\xD0\x98\xE6\xB8\xB8", u"И游"_s},
             {"\xF0\x9F\x8E\xAE", u"\U0001F3AE"_s},
             {"\xF4\x8F\xBF\xBF\xEF\xBF\xBF", u"\U0010FFFF\uFFFF"_s},
             {"\xEF\xBB\xBF[A]", u"\uFEFF[A]"_s},
             {"a\xFFz", u"a\xDCFFz"_s},
             {"\xC0\xAF", u"\xDCC0\xDCAF"_s},                     // overlong "/"
             {"\xE0\x80\xAF", u"\xDCE0\xDC80\xDCAF"_s},           // the same in three bytes
             {"\xED\xB2\x80", u"\xDCED\xDCB2\xDC80"_s},           // an encoded surrogate
             {"\xF4\x90\x80\x80", u"\xDCF4\xDC90\xDC80\xDC80"_s}, // beyond Unicode
             {"\xD0\x98\xD0", u"\x0418\xDCD0"_s},                 // cut off at the end
             {"\xFF\xEF\xBB\xBF", u"\xDCFF\xFEFF"_s},
             {"\xF0\x90\x82\x80\x80", u"\xD800\xDC80\xDC80"_s}, // a pair, then a lone one
         }) {
        EXPECT_EQ(fromBytes(bytes), text);
        EXPECT_EQ(toBytes(text), bytes);
    }
}
