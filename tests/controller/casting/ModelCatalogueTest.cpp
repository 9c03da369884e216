#include "controller/casting/ModelCatalogue.h"

#include <gtest/gtest.h>

namespace orlenta::controller {

TEST(ModelCatalogue, EachModelShowsItsOwnControls) {
    const auto titles = [](const QString &key) {
        QStringList shown;
        for (const SettingsControl &control : ModelCatalogue::controlsFor(key))
            shown.append(control.title);
        return shown.join(u' ');
    };
    EXPECT_EQ(titles(QStringLiteral("v3")), QStringLiteral(" Similarity Style"));
    EXPECT_EQ(titles(QStringLiteral("v2")), QStringLiteral("Stability Similarity Style Speed"));
    EXPECT_EQ(titles(QStringLiteral("Flash")), QStringLiteral("Stability Similarity Style Speed"));
    EXPECT_EQ(titles(QStringLiteral("unheard of")), titles(QStringLiteral("v3")));
}

TEST(ModelCatalogue, TipsMarkedForAModelNameOneThatExists) {
    for (const DeliveryTip &tip : ModelCatalogue::tips())
        for (const QString &key : tip.models)
            EXPECT_EQ(ModelCatalogue::model(key).key, key);
}

} // namespace orlenta::controller
