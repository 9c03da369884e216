#include "shell/inspector/ModelSection.h"

#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QVBoxLayout>

#include "shell/controls/InfoButton.h"
#include "shell/controls/TextLabel.h"
#include "shell/inspector/InspectedLines.h"
#include "shell/inspector/ModelSegment.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {

ModelSection::ModelSection(InspectedLines &lines, QWidget *parent)
    : QWidget(parent), m_lines(lines), m_group(new QButtonGroup(this)),
      m_words(new TextLabel({}, TextLabel::Style::Caption)) {
    auto *header = new QHBoxLayout;
    header->addWidget(new TextLabel(u"MODEL"_s, TextLabel::Style::Section));
    header->addStretch();
    auto *row = new QHBoxLayout;
    row->setSpacing(4);
    for (const controller::ModelDescription &model : controller::ModelCatalogue::models()) {
        auto *segment = new ModelSegment(model);
        auto *info = new InfoButton(model.title, model.information);
        m_group->addButton(segment);
        m_segments.append(segment);
        m_infos.append(info);
        row->addWidget(segment, 1);
        header->addWidget(info);
        connect(segment, &ModelSegment::clicked, this, [this, key = model.key] {
            m_lines.change([&key](model::ProjectLineSettings &settings) { settings.model = key; });
        });
    }
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(header);
    layout->addLayout(row);
    layout->addWidget(m_words);
    connect(&lines, &InspectedLines::changed, this, &ModelSection::showState);
    showState();
}

void ModelSection::showState() {
    const auto shared = m_lines.shared(&model::ProjectLineSettings::model);
    m_words->setText(m_lines.isEmpty() ? QString() : u"The selected lines use several models."_s);
    // An exclusive group doesn't allow unchecking all buttons.
    m_group->setExclusive(false);
    for (qsizetype index = 0; index < m_segments.size(); ++index) {
        ModelSegment *segment = m_segments.at(index);
        const controller::ModelDescription &model = segment->model();
        const bool isChosen = shared && controller::ModelCatalogue::model(*shared).key == model.key;
        segment->setChecked(isChosen);
        segment->setEnabled(!m_lines.isEmpty());
        m_infos.at(index)->setVisible(isChosen);
        if (isChosen)
            m_words->setText(u"%1. %2"_s.arg(model.subtitle, model.description));
    }
    m_group->setExclusive(true);
}

} // namespace orlenta::shell
