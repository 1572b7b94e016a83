#include "archive.h"

#include <gtest/gtest.h>

TEST(Archive, APathThatIsTooLongForTheSystemIsRefused) {
    for (const auto& [steps, isInside] : {std::pair(2'000, true), std::pair(32'000, false)}) {
        const auto entries =
            parseListing("\n----------\nPath = " + QByteArray("a/").repeated(steps) +
                         "x\nSize = 1\nAttributes = A -rw-r--r--\n");
        ASSERT_TRUE(entries);
        EXPECT_EQ(staysInside(*entries, {}), isInside) << steps;
    }
}
