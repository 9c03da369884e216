#include "model/FileNameGuard.h"

#include <gtest/gtest.h>

namespace orlenta::model {
namespace {

using namespace Qt::StringLiterals;

TEST(FileNameGuard, OnlyTheLastPathComponentIsKept) {
    const QString withNul = u"..x.wav"_s.replace(2, 1, QChar(u'\0'));
    const std::pair<QString, QString> cases[] = {
        {u"take.wav"_s, u"take.wav"_s},
        {u"../../secret.wav"_s, u"secret.wav"_s},
        {u"/etc/passwd"_s, u"passwd"_s},
        {u"folder/"_s, u"folder"_s},
        {u"a//"_s, u"a"_s},
        {u"/"_s, {}},
        {u"///"_s, {}},
        {{}, {}},
        {u"."_s, {}},
        {u".."_s, {}},
        {u"../.."_s, {}},
        {u"a/../"_s, {}},
        {u"...wav"_s, u"...wav"_s},
        {u"a\\b.wav"_s, u"a\\b.wav"_s},
        {withNul, {}},
    };
    for (const auto &[stored, guarded] : cases)
        EXPECT_EQ(guardedFileName(stored), guarded) << stored.toStdString();
}

} // namespace
} // namespace orlenta::model
