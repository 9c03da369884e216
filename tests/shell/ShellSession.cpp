#include "ShellSession.h"

#include <chrono>

#include <QtGui/QDesktopServices>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QAbstractSlider>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QToolButton>

#include "controller/commands/CommandTable.h"
#include "speech/LocalVoicesProcess.h"

namespace orlenta::testing {
namespace {

constexpr std::chrono::milliseconds startLimit{30'000};
constexpr int waitLimitMilliseconds = 60'000;

/// Whether a widget is part of another control that has the accessible name.
bool isPartOfControl(const QWidget &widget) {
    const QWidget *parent = widget.parentWidget();
    return qobject_cast<const QComboBox *>(parent) != nullptr || qobject_cast<const QLineEdit *>(parent) != nullptr ||
           qobject_cast<const QScrollBar *>(&widget) != nullptr ||
           (parent != nullptr && qobject_cast<const QComboBox *>(parent->parentWidget()) != nullptr) ||
           widget.objectName().startsWith(QStringLiteral("qt_"));
}

bool isControl(const QWidget &widget) {
    return widget.inherits("QAbstractButton") || widget.inherits("QLineEdit") || widget.inherits("QComboBox") ||
           widget.inherits("QAbstractSlider") || widget.inherits("orlenta::shell::WaveformBarsView") ||
           widget.inherits("QAbstractItemView");
}

bool labelFits(const QLabel &label) {
    if (label.text().isEmpty() || !label.pixmap(Qt::ReturnByValue).isNull())
        return true;
    if (label.wordWrap())
        return label.heightForWidth(label.width()) <= label.height();
    return label.sizeHint().width() <= label.width() && label.sizeHint().height() <= label.height();
}

} // namespace

ShellSession::ShellSession() : ShellSession(QStringLiteral(ORLENTA_LOCAL_VOICES)) {}

ShellSession::ShellSession(const QString &localVoicesProgram, const QString &soundServer)
    : defaults(m_folder.filePath(QStringLiteral("defaults.ini"))),
      localVoices(defaults, std::make_unique<speech::LocalVoicesProcess>(localVoicesProgram, startLimit)),
      sound(soundServer.isEmpty() ? QStringLiteral("unix:%1").arg(m_folder.filePath(QStringLiteral("no-sound")))
                                  : soundServer),
      devices(sound, defaults), inputRoutes(sound, defaults),
      microphone(sound), context{{defaults, credentials, sound, devices, routing, inputRoutes, microphone},
                                 localVoices,
                                 commands} {}

bool ShellSession::startLocalVoices() {
    localVoices.switchOn();
    return waitUntil([this] { return localVoices.state() == speech::LocalVoices::State::On; });
}

model::StoredProject ShellSession::makeProject(const QString &name, const QStringList &lines) {
    const base::Timestamp now = base::wholeSeconds(base::systemClock());
    model::Project project = model::Project::makeNew(name, now);
    project.lines = {};
    project.tabs.first().lineIds = {};
    for (const QString &text : lines) {
        model::ProjectLine line = model::ProjectLine::makeNew();
        const qsizetype colon = text.indexOf(QLatin1Char(':'));
        line.text = text.mid(colon + 1).trimmed();
        if (colon > 0) {
            const QString voiceName = text.left(colon);
            const QString serviceId = QStringLiteral("local-%1").arg(voiceName.toLower());
            project.voices.append(
                {model::VoiceId::create(), serviceId, voiceName, voiceName, QStringLiteral("#3A59D1")});
            line.voiceId = project.voices.last().id;
        }
        project.appendLine(line);
    }
    return store(name, std::move(project));
}

model::StoredProject ShellSession::store(const QString &name, model::Project project) {
    const base::Timestamp now = base::wholeSeconds(base::systemClock());
    auto stored = model::ProjectStore::create(path(name), name, std::move(project), now);
    return stored ? stored.value() : model::StoredProject{};
}

std::unique_ptr<controller::ProjectSession> ShellSession::openOffline(const model::StoredProject &stored) {
    auto session = std::make_unique<controller::ProjectSession>(context.services, stored);
    session->service().useEndpoint(QUrl(QStringLiteral("http://127.0.0.1:1")));
    return session;
}

void press(const QKeySequence &key) {
    QTest::keyClick(QApplication::focusWidget(), key[0].key(), key[0].keyboardModifiers());
}

void pressKeyOf(controller::CommandId command) {
    press(QKeySequence(controller::CommandTable::command(command).keys.first()));
}

FileManager::FileManager() {
    QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open");
}

FileManager::~FileManager() {
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
}

bool waitUntil(const std::function<bool()> &condition) {
    return QTest::qWaitFor(condition, waitLimitMilliseconds);
}

QAbstractButton *buttonNamed(const QWidget &parent, const QString &text) {
    for (QAbstractButton *button : parent.findChildren<QAbstractButton *>()) {
        if (button->isVisible() && button->text().remove(QLatin1Char('&')) == text)
            return button;
    }
    return nullptr;
}

QStringList unnamedControls(const QWidget &window) {
    QStringList unnamed;
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        if (!isControl(*widget) || isPartOfControl(*widget))
            continue;
        const auto *button = qobject_cast<const QAbstractButton *>(widget);
        const QString text = button == nullptr ? QString() : button->text();
        if (widget->accessibleName().isEmpty() && text.isEmpty())
            unnamed.append(
                QStringLiteral("%1 \"%2\" has no name").arg(QLatin1String(widget->metaObject()->className()), text));
        if (widget->toolTip().isEmpty())
            unnamed.append(QStringLiteral("%1 \"%2\" has no tooltip")
                               .arg(QLatin1String(widget->metaObject()->className()),
                                    text.isEmpty() ? widget->accessibleName() : text));
    }
    return unnamed;
}

QStringList clippedTexts(const QWidget &window) {
    QStringList clipped;
    for (const QLabel *label : window.findChildren<QLabel *>()) {
        if (label->isVisible() && !labelFits(*label))
            clipped.append(label->text());
    }
    for (const QAbstractButton *button : window.findChildren<QAbstractButton *>()) {
        const bool showsText = !button->text().isEmpty() &&
                               (qobject_cast<const QToolButton *>(button) == nullptr ||
                                qobject_cast<const QToolButton *>(button)->toolButtonStyle() != Qt::ToolButtonIconOnly);
        const QSize needed =
            button->hasHeightForWidth() ? QSize(0, button->heightForWidth(button->width())) : button->minimumSizeHint();
        if (button->isVisible() && showsText &&
            (needed.width() > button->width() || needed.height() > button->height()))
            clipped.append(button->text());
    }
    for (const QComboBox *combo : window.findChildren<QComboBox *>()) {
        if (combo->isVisible() && combo->minimumSizeHint().width() > combo->width())
            clipped.append(combo->currentText());
    }
    return clipped;
}

} // namespace orlenta::testing
