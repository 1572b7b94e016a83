#include "archive.h"
#include "support.h"

TEST(Archive, APathThatIsTooLongForTheSystemIsRefused) {
    for (const auto& [steps, isInside] : {std::pair(2'000, true), std::pair(32'000, false)}) {
        const auto entries =
            parseListing("\n----------\nPath = " + QByteArray("a/").repeated(steps) +
                         "x\nSize = 1\nAttributes = A -rw-r--r--\n");
        ASSERT_TRUE(entries);
        EXPECT_EQ(staysInside(*entries, {}), isInside) << steps;
    }
}

TEST(Archive, DeepFoldersTakeNoMoreMemoryThanTheirListing) {
    QByteArray listing = "\n----------\n";
    for (int i = 0; i < 50; ++i)
        listing += "Path = " + QByteArray::number(i) + QByteArray("/a").repeated(1'500) + "\n";
    const auto entries = parseListing(listing);
    ASSERT_TRUE(entries);
    qsizetype length = 0;
    for (const QString& folder : foldersOf(*entries))
        length += folder.size();
    EXPECT_GT(length, 0);
    EXPECT_LT(length, listing.size());
}

TEST(Archive, SizesCanBeAddedUp) {
    for (const auto& [text, size] :
         Rows<QByteArray, qint64>{{"0", 0},
                                  {"17", 17},
                                  {"-17", 0},
                                  {"", 0},
                                  {"9223372036854775807", largestSize},
                                  {"18446744073709551615", largestSize}}) {
        const auto entries = parseListing("\n----------\nPath = a\nSize = " + text);
        ASSERT_TRUE(entries);
        EXPECT_EQ(entries->first().size, size) << text.constData();
    }
}
