#include "base/CutText.h"

#include <gtest/gtest.h>

namespace orlenta::base {

TEST(CutText, CutsBetweenCharactersOnly) {
    EXPECT_EQ(cutText(QStringLiteral("abc"), 3), QStringLiteral("abc"));
    EXPECT_EQ(cutText(QStringLiteral("abcd"), 3), QStringLiteral("abc\u2026"));
    const QString accented = QStringLiteral("abe\u0301d");
    EXPECT_EQ(cutText(accented, 3), QStringLiteral("ab\u2026"));
    EXPECT_EQ(cutText(QStringLiteral("ab\U0001F600d"), 3), QStringLiteral("ab\u2026"));
}

} // namespace orlenta::base
