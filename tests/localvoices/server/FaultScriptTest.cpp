#include "localvoices/server/FaultScript.h"

#include <gtest/gtest.h>

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

TEST(FaultScript, EntriesAreTakenInOrderByTheirEndpoints) {
    auto script = FaultScript::parse(u"tts:429=1*2, ok ,slow=250,user:402"_s);
    ASSERT_TRUE(script);
    FaultScript faults = script.value();
    EXPECT_EQ(faults.take(u"user"_s).kind, FaultKind::None); // the "ok" for any endpoint
    EXPECT_EQ(faults.take(u"tts"_s).status, 429);
    EXPECT_EQ(faults.take(u"tts"_s).argument, u"1"_s);
    EXPECT_EQ(faults.take(u"tts"_s).amount, 250);
    EXPECT_EQ(faults.take(u"tts"_s).kind, FaultKind::None);
    EXPECT_EQ(faults.take(u"user"_s).status, 402);
}

TEST(FaultScript, AnEntryThatMeansNothingIsNamed) {
    for (const QString &text :
         {u"nonsense"_s, u"200"_s, u"slow"_s, u"slow=x"_s, u"huge=-1"_s, u"everyone:500"_s, u"500*x"_s, u"ok,,600"_s}) {
        const auto script = FaultScript::parse(text);
        EXPECT_FALSE(script) << text.toStdString();
    }
}

} // namespace orlenta::localvoices
