#include "shell/inspector/ModelSection.h"

#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QVBoxLayout>

#include "shell/controls/TextLabel.h"
#include "shell/inspector/InspectedLines.h"
#include "shell/inspector/ModelCard.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {

ModelSection::ModelSection(InspectedLines &lines, QWidget *parent)
    : QWidget(parent), m_lines(lines), m_group(new QButtonGroup(this)) {
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new TextLabel(u"MODEL"_s, TextLabel::Style::Section));
    for (const controller::ModelDescription &model : controller::ModelCatalogue::models()) {
        auto *card = new ModelCard(model);
        m_group->addButton(card);
        m_cards.append(card);
        layout->addWidget(card);
        connect(card, &ModelCard::clicked, this, [this, key = model.key] {
            m_lines.change([&key](model::ProjectLineSettings &settings) { settings.model = key; });
        });
    }
    connect(&lines, &InspectedLines::changed, this, &ModelSection::showState);
    showState();
}

void ModelSection::showState() {
    const auto shared = m_lines.shared(&model::ProjectLineSettings::model);
    // An exclusive group doesn't allow unchecking all buttons.
    m_group->setExclusive(false);
    for (ModelCard *card : std::as_const(m_cards)) {
        card->setChecked(shared && controller::ModelCatalogue::model(*shared).key == card->modelKey());
        card->setEnabled(!m_lines.isEmpty());
    }
    m_group->setExclusive(true);
}

} // namespace orlenta::shell
