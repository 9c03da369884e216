#include "shell/inspector/VoiceSection.h"

#include <algorithm>

#include <QtCore/QEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

#include "controller/casting/VoiceCasting.h"
#include "controller/commands/CommandTable.h"
#include "controller/document/Notices.h"
#include "controller/ProjectController.h"
#include "shell/controls/FocusedItem.h"
#include "shell/controls/PlainLabel.h"
#include "shell/controls/ShownText.h"
#include "shell/controls/TextLabel.h"
#include "shell/inspector/InspectedLines.h"
#include "shell/inspector/VoiceDelegate.h"
#include "shell/inspector/VoiceListModel.h"
#include "shell/menus/CommandActions.h"
#include "shell/theme/Icon.h"
#include "shell/theme/Theme.h"
#include "speech/account/ElevenLabsService.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

constexpr int shownVoices = 5;

QPixmap voiceSwatch(const QColor &color, int side, qreal ratio) {
    QPixmap pixmap(QSize(side, side) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(QRectF(1, 1, side - 2, side - 2));
    return pixmap;
}

speech::ServiceColor serviceColor(const QColor &color) {
    return {color.redF(), color.greenF(), color.blueF()};
}

} // namespace

VoiceSection::VoiceSection(controller::ProjectController &controller, speech::ElevenLabsService &service,
                           InspectedLines &lines, QWidget *parent)
    : QWidget(parent), m_controller(controller), m_service(service), m_lines(lines),
      m_model(new VoiceListModel(controller, service, this)), m_swatch(new PlainLabel),
      m_castName(new TextLabel({}, TextLabel::Style::Heading)), m_search(new QLineEdit), m_list(new QListView),
      m_message(new TextLabel({}, TextLabel::Style::Caption)), m_connect(new QPushButton(u"Connect an account…"_s)),
      m_useLocalVoices(new QPushButton(u"Use local voices"_s)) {
    m_search->setPlaceholderText(u"Search voices, descriptions, languages…"_s);
    m_search->setClearButtonEnabled(true);
    for (QToolButton *clear : m_search->findChildren<QToolButton *>()) {
        clear->setAccessibleName(u"Clear the search"_s);
        clear->setToolTip(tipWithKey(u"Clear the search"_s, CommandId::LeaveVoiceSearch));
    }
    m_search->addAction(Icon::named(QStringLiteral("search"), Icon::Tint::Muted), QLineEdit::LeadingPosition)
        ->setText(u"Search voices"_s);
    m_search->setAccessibleName(u"Search voices"_s);
    m_search->installEventFilter(this);
    m_search->setToolTip(u"Search voices by name, description or language"_s);
    m_list->setModel(m_model);
    m_list->setItemDelegate(new VoiceDelegate(m_list));
    m_list->setMouseTracking(true);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->viewport()->setAutoFillBackground(false);
    m_list->setUniformItemSizes(true);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setAccessibleName(u"Voices"_s);
    m_list->installEventFilter(this);
    new FocusedItem(*m_list);
    m_list->setToolTip(u"Click a voice, or press Return on it, to cast the selected lines"_s);
    m_castName->setWordWrap(true);
    m_useLocalVoices->setToolTip(u"Speak with voices on this computer; no account needed"_s);
    m_useLocalVoices->setAccessibleName(u"Use local voices"_s);
    m_connect->setToolTip(u"Connect your ElevenLabs account"_s);
    m_connect->setAccessibleName(u"Connect an account"_s);

    auto *cast = new QHBoxLayout;
    cast->addWidget(m_swatch);
    cast->addWidget(m_castName, 1);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new TextLabel(u"VOICE"_s, TextLabel::Style::Section));
    layout->addLayout(cast);
    layout->addWidget(m_search);
    layout->addWidget(m_list);
    layout->addWidget(m_message);
    layout->addWidget(m_useLocalVoices);
    layout->addWidget(m_connect);

    connect(m_search, &QLineEdit::textChanged, m_model, &VoiceListModel::setSearch);
    connect(m_list, &QListView::clicked, this, &VoiceSection::castVoice);
    connect(m_list, &QListView::activated, this, [this](const QModelIndex &index) {
        // A double click has cast the voice on its first click; Return hasn't.
        if (m_list->hasFocus())
            castVoice(index);
    });
    connect(m_connect, &QPushButton::clicked, this, &VoiceSection::accountRequested);
    connect(m_useLocalVoices, &QPushButton::clicked, this, &VoiceSection::localVoicesRequested);
    connect(m_model, &QAbstractItemModel::modelReset, this, [this] {
        fitList();
        showCast();
        showAvailability();
    });
    connect(&lines, &InspectedLines::changed, this, &VoiceSection::showCast);
    connect(&service, &speech::ElevenLabsService::isAuthenticatedChanged, this, &VoiceSection::showAvailability);
    connect(&service, &speech::ElevenLabsService::isLoadingChanged, this, &VoiceSection::showAvailability);
    showCast();
    showAvailability();
    fitList();
}

void VoiceSection::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange) {
        fitList();
        showCast();
    }
}

bool VoiceSection::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::KeyPress) {
        const auto &key = *static_cast<QKeyEvent *>(event);
        if (watched == m_search ? handleSearchKey(key) : handleListKey(key))
            return true;
    }
    return QWidget::eventFilter(watched, event);
}

bool VoiceSection::handleSearchKey(const QKeyEvent &key) {
    if (isKeyOf(key, CommandId::GoToVoices) && m_list->isVisible() && m_list->isEnabled())
        m_list->setFocus(Qt::TabFocusReason);
    else if (isKeyOf(key, CommandId::CastFoundVoice))
        castFirstMatch();
    else if (isKeyOf(key, CommandId::LeaveVoiceSearch))
        leaveSearch();
    else
        return false;
    return true;
}

bool VoiceSection::handleListKey(const QKeyEvent &key) {
    if (key.key() == Qt::Key_Up && m_list->currentIndex().row() <= 0)
        m_search->setFocus(Qt::BacktabFocusReason);
    else if (isKeyOf(key, CommandId::LeaveVoiceSearch))
        leaveSearch();
    else
        return false;
    return true;
}

void VoiceSection::castFirstMatch() {
    // Without a search, the first voice is nobody's choice.
    if (m_search->text().trimmed().isEmpty() || m_lines.isEmpty() || m_model->rowCount() == 0)
        return m_controller.notices().refuse(controller::CommandTable::requirement(CommandId::CastFoundVoice));
    castVoice(m_model->index(0));
    Q_EMIT linesRequested();
}

void VoiceSection::leaveSearch() {
    if (m_search->text().isEmpty())
        Q_EMIT linesRequested();
    m_search->clear();
}

void VoiceSection::fitList() {
    QStyleOptionViewItem option;
    option.font = m_list->font();
    option.fontMetrics = m_list->fontMetrics();
    const int row = m_list->itemDelegate()->sizeHint(option, {}).height();
    const int shortest = row * shownVoices + row / 2;
    const int longest = std::max(shortest, row * m_model->rowCount());
    m_list->setFixedHeight(std::clamp(m_room, shortest, longest) + 2 * m_list->frameWidth());
}

void VoiceSection::setListRoom(int height) {
    if (std::exchange(m_room, height) != height)
        fitList();
}

void VoiceSection::castVoice(const QModelIndex &index) {
    const QString voiceId = index.data(VoiceListModel::VoiceIdRole).toString();
    if (voiceId.isEmpty() || m_lines.isEmpty())
        return;
    const controller::ServiceVoice voice{voiceId, index.data(Qt::DisplayRole).toString()};
    // Casting the same voice again would add an undo step that does nothing.
    const auto shared = m_lines.sharedVoice();
    const model::ProjectVoice *present = shared ? m_controller.project().findVoice(*shared) : nullptr;
    if (present == nullptr || present->elevenLabsVoiceId != voiceId)
        m_controller.voices().assignVoice(m_lines.ids(), voice);
    const auto color = index.data(VoiceListModel::CastColorRole).value<QColor>();
    speech::VoiceSelection &selection = m_service.voiceSelection();
    selection.selectVoice(voiceId, voice.name, color.isValid() ? serviceColor(color) : selection.selectedVoiceColor());
}

void VoiceSection::showCast() {
    const auto shared = m_lines.sharedVoice();
    const model::ProjectVoice *voice = shared ? m_controller.project().findVoice(*shared) : nullptr;
    const int side = fontMetrics().height();
    m_swatch->setVisible(voice != nullptr);
    if (voice != nullptr) {
        m_swatch->setPixmap(voiceSwatch(QColor(voice->colorStripeHex), side, devicePixelRatioF()));
        m_castName->setText(shownName(voice->castName));
    } else if (m_lines.isEmpty()) {
        m_castName->setText(u"No line selected"_s);
    } else {
        m_castName->setText(m_lines.hasDifferentVoices() ? u"Several voices"_s : u"No voice yet"_s);
    }
    const int row = voice != nullptr ? m_model->rowOf(voice->elevenLabsVoiceId) : -1;
    QItemSelectionModel *selection = m_list->selectionModel();
    if (row < 0) {
        selection->clearSelection();
    } else if (!selection->isRowSelected(row)) {
        const QModelIndex cast = m_model->index(row);
        selection->select(cast, QItemSelectionModel::ClearAndSelect);
        if (m_list->hasFocus())
            selection->setCurrentIndex(cast, QItemSelectionModel::NoUpdate);
        m_list->scrollTo(cast);
    }
    m_list->setEnabled(!m_lines.isEmpty());
}

void VoiceSection::showAvailability() {
    const bool hasVoices = m_model->hasVoices();
    const bool isEmptySearch = hasVoices && m_model->rowCount() == 0;
    const bool hasAccountVoices = !m_service.voices().isEmpty();
    m_search->setVisible(hasVoices);
    m_list->setVisible(hasVoices && !isEmptySearch);
    const bool mayConnect = !hasAccountVoices && !m_service.isLoading() && !m_service.isAuthenticated();
    m_connect->setVisible(mayConnect);
    m_useLocalVoices->setVisible(mayConnect);
    m_message->setVisible(isEmptySearch || !hasAccountVoices);
    if (isEmptySearch)
        m_message->setText(u"No voice matches the search."_s);
    else if (m_service.isLoading())
        m_message->setText(u"Connecting…"_s);
    else if (m_service.isAuthenticated())
        m_message->setText(u"This account has no voices."_s);
    else if (hasVoices)
        m_message->setText(u"These are the project's voices. For more, use local voices, or connect an account."_s);
    else
        m_message->setText(u"Use local voices, or connect an account."_s);
}

} // namespace orlenta::shell
