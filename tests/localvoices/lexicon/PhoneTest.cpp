#include "localvoices/lexicon/Phone.h"

#include <gtest/gtest.h>
#include <QtCore/QByteArrayList>

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

TEST(Phone, BothAlphabetsGiveTheEnginesTheSameSounds) {
    struct Case {
        QString ipa;
        QString arpabet;
        QByteArray espeak;
        QByteArray flite;
    };
    for (const Case &each : {
             Case{u"ˈmædɪsən"_s, u"M AE1 D IH0 S AH0 N"_s, "m'adIs@n", "m ae1 d ih0 s ax0 n"},
             Case{u"t͡ʃaɪˈnuː"_s, u"CH AY0 N UW1"_s, "tSaIn'u:", "ch ay0 n uw1"},
             Case{u"dʒɪf"_s, u"JH IH F"_s, "dZ'If", "jh ih1 f"},
             Case{u"ˌɪntəˈnæʃnəl"_s, u"IH2 N T AH0 N AE1 SH N AH0 L"_s, ",Int@n'aSn@l", "ih0 n t ax0 n ae1 sh n ax0 l"},
             Case{u"ɲo"_s, u"N Y OW"_s, "nj'oU", "n y ow1"},
         }) {
        EXPECT_EQ(phonesFromIpa(each.ipa), phonesFromArpabet(each.arpabet)) << each.ipa.toStdString();
        EXPECT_EQ(espeakMnemonics(phonesFromIpa(each.ipa)), each.espeak);
        QByteArrayList names;
        for (const QByteArray &name : fliteNames(phonesFromArpabet(each.arpabet)))
            names << name;
        EXPECT_EQ(names.join(' '), each.flite);
    }
}

TEST(Phone, WhatIsNoSoundIsLeftOut) {
    EXPECT_TRUE(phonesFromArpabet(u"QQ 1 ?? "_s).empty());
    EXPECT_TRUE(phonesFromIpa(u"!?"_s).empty());
    EXPECT_EQ(phonesFromIpa(u"hə.ˈloʊ!"_s), phonesFromArpabet(u"HH AH0 L OW1"_s));
}

} // namespace orlenta::localvoices
