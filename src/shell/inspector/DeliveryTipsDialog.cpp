#include "shell/inspector/DeliveryTipsDialog.h"

#include <utility>

#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QVBoxLayout>

#include "controller/casting/ModelCatalogue.h"
#include "shell/controls/TextLabel.h"
#include "shell/theme/Theme.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

using controller::DeliveryTip;
using controller::ModelCatalogue;

void addTip(QVBoxLayout &layout, const DeliveryTip &tip) {
    if (!tip.title.isEmpty()) {
        auto *title = new TextLabel(tip.title, TextLabel::Style::Heading);
        title->setWordWrap(true);
        layout.addWidget(title);
    }
    auto *text = new TextLabel(tip.text, TextLabel::Style::Body);
    layout.addWidget(text);
    layout.addSpacing(Theme::unit(text) * 2);
}

} // namespace

DeliveryTipsDialog::DeliveryTipsDialog(QWidget *parent) : QDialog(parent) {
    setWindowTitle(ModelCatalogue::tipsTitle());
    setAccessibleName(ModelCatalogue::tipsTitle());
    auto *content = new QWidget;
    auto *tips = new QVBoxLayout(content);
    tips->setSpacing(Theme::unit(this) / 2);
    tips->addWidget(new TextLabel(ModelCatalogue::commonTipsHeading(), TextLabel::Style::Section));
    for (const DeliveryTip &tip : ModelCatalogue::tips()) {
        if (tip.models.isEmpty())
            addTip(*tips, tip);
    }
    QStringList models;
    for (const DeliveryTip &tip : ModelCatalogue::tips()) {
        if (tip.models.isEmpty())
            continue;
        if (std::exchange(models, tip.models) != tip.models) {
            tips->addSpacing(6);
            tips->addWidget(new TextLabel(ModelCatalogue::modelTipsHeading(models), TextLabel::Style::Section));
        }
        addTip(*tips, tip);
    }
    tips->addStretch();

    auto *scroll = new QScrollArea;
    scroll->setWidget(content);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setAccessibleName(ModelCatalogue::tipsTitle());
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    buttons->button(QDialogButtonBox::Close)->setToolTip(u"Close the tips"_s);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    auto *title = new TextLabel(ModelCatalogue::tipsTitle(), TextLabel::Style::Title);
    layout->addWidget(title);
    layout->addWidget(new TextLabel(ModelCatalogue::tipsLead(), TextLabel::Style::Caption));
    layout->addWidget(scroll, 1);
    layout->addWidget(buttons);
    const int unit = Theme::unit(this);
    resize(unit * 110, unit * 130);
}

} // namespace orlenta::shell
