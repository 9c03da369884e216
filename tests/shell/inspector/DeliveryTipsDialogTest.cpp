#include "shell/inspector/DeliveryTipsDialog.h"

#include <gtest/gtest.h>
#include <QtWidgets/QLabel>

#include "controller/casting/ModelCatalogue.h"

namespace orlenta::shell {

TEST(DeliveryTipsDialog, ShowsEachTipOnceUnderTheModelsThatItIsFor) {
    const DeliveryTipsDialog dialog;
    QStringList shown;
    for (const QLabel *label : dialog.findChildren<QLabel *>())
        shown.append(label->text());
    for (const controller::DeliveryTip &tip : controller::ModelCatalogue::tips())
        EXPECT_EQ(shown.count(tip.text), 1) << tip.text.toStdString();
    EXPECT_EQ(shown.filter(QStringLiteral("ONLY")),
              QStringList({QStringLiteral("Expressive ONLY"), QStringLiteral("Standard AND Draft ONLY")}));
}

} // namespace orlenta::shell
