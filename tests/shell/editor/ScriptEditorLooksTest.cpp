#include <algorithm>
#include <memory>

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QToolButton>

#include "controller/script/TabEditing.h"
#include "controller/takes/TakeEditing.h"
#include "shell/editor/row/LineHeader.h"
#include "shell/editor/row/NotesField.h"
#include "shell/editor/row/TakeStrip.h"
#include "shell/editor/row/WaveformBarsView.h"
#include "shell/editor/ScriptEditorFixture.h"
#include "shell/editor/ScriptTabBar.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {
namespace {

/// An editor that shows every kind of control and every state of a row.
class ScriptEditorLooksTest : public ScriptEditorFixture {
protected:
    void SetUp() override {
        model::Project project = projectWith(
            {QStringLiteral("A line with takes."), QStringLiteral("A line that is being generated."), QString(),
             QStringLiteral("A line without anything, long enough to go on in a second row of text on any screen.")},
            {QStringLiteral("Narrator"), QStringLiteral("The Captain with a Long Name")});
        project.lines.update(project.tabs.first().lineIds.at(2),
                             [](model::ProjectLine &line) { line.voiceId.reset(); });
        open(project, {600, 700});
        addTake(0);
        addTake(0);
        controller->takes().setGenerating(controller::GenerationState::Generating, idAt(1));
        controller->tabs().addTab();
        controller->tabs().setActiveTab(controller->project().tabs.first().id);
        controller->selection().selectAlone(idAt(0));
        controller->setSpotError(QStringLiteral("No generated audio to spot. Generate audio first."));
    }
    void TearDown() override {
        editor.reset();
        Theme::setUiScale(1.0);
        Theme::apply(Appearance::Light);
    }

    /// A font change takes several rounds of events.
    static void settle() {
        for (int round = 0; round < 5; ++round) {
            QCoreApplication::sendPostedEvents();
            QCoreApplication::processEvents();
        }
    }

    void expectNothingClipped(const QString &where) {
        for (const QWidget *widget : editor->findChildren<QWidget *>()) {
            if (!widget->isVisible())
                continue;
            const std::string what = (where + QLatin1Char(' ') + widget->accessibleName()).toStdString();
            const auto *label = qobject_cast<const QLabel *>(widget);
            if (label != nullptr && label->wordWrap()) {
                EXPECT_GE(label->height(), label->heightForWidth(label->width())) << what;
            } else if (label != nullptr || qobject_cast<const QPushButton *>(widget) != nullptr ||
                       qobject_cast<const QToolButton *>(widget) != nullptr) {
                EXPECT_GE(widget->width(), widget->sizeHint().width()) << what;
                EXPECT_GE(widget->height(), widget->sizeHint().height()) << what;
            }
            if (const auto *text = qobject_cast<const ScriptTextField *>(widget)) {
                EXPECT_GE(text->viewport()->height(), static_cast<int>(text->document()->size().height())) << what;
            }
            const QWidget *parent = widget->parentWidget();
            if (qobject_cast<const LineRow *>(parent) != nullptr ||
                qobject_cast<const LineHeader *>(parent) != nullptr ||
                qobject_cast<const TakeStrip *>(parent) != nullptr) {
                EXPECT_TRUE(parent->rect().contains(widget->geometry())) << what;
            }
        }
    }
};

TEST_F(ScriptEditorLooksTest, EveryControlHasANameATooltipAndKeyboardAccess) {
    for (const QWidget *widget : editor->findChildren<QWidget *>()) {
        const bool isButton = qobject_cast<const QAbstractButton *>(widget) != nullptr;
        const bool isControl = isButton || widget->focusPolicy() != Qt::NoFocus ||
                               qobject_cast<const QAbstractSlider *>(widget) != nullptr ||
                               qobject_cast<const WaveformBarsView *>(widget) != nullptr;
        if (!isControl || widget->objectName().startsWith(QLatin1String("qt_scrollarea")))
            continue;
        const auto *button = qobject_cast<const QAbstractButton *>(widget);
        const bool isNamed = !widget->accessibleName().isEmpty() || (button != nullptr && !button->text().isEmpty());
        const bool isHiddenBar = qobject_cast<const QScrollBar *>(widget) != nullptr && !widget->isVisible();
        EXPECT_TRUE(isNamed || isHiddenBar)
            << widget->metaObject()->className() << " in " << widget->parentWidget()->accessibleName().toStdString();
        if (isButton && widget->isVisible()) {
            EXPECT_FALSE(widget->toolTip().isEmpty()) << widget->accessibleName().toStdString();
        }
    }
}

TEST_F(ScriptEditorLooksTest, NothingIsClippedAtAnyInterfaceScale) {
    for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
        Theme::setUiScale(scale);
        for (const int width : {400, 600, 1100}) {
            editor->resize(static_cast<int>(width * scale), static_cast<int>(800 * scale));
            settle();
            EXPECT_EQ(rowAt(0)->textField().document()->defaultFont().pixelSize(), qRound(14 * scale));
            expectNothingClipped(QStringLiteral("at scale %1, width %2:").arg(scale).arg(width));
        }
    }
}

TEST_F(ScriptEditorLooksTest, IdleWaveformsHaveContrastInEveryRowAndAppearance) {
    controller->selection().selectAlone(idAt(0));
    editor->commands().carryOut(CommandId::SwitchDirectionMode, idAt(0), editor.get());
    for (const Appearance appearance : {Appearance::Light, Appearance::Dark}) {
        Theme::apply(appearance);
        for (const qsizetype selected : {0, 3}) {
            controller->selection().selectAlone(idAt(selected));
            settle();
            const auto *waveform = rowAt(0)->findChild<TakeStrip *>()->findChild<WaveformBarsView *>();
            const QImage row = rowAt(0)->grab().toImage();
            const QRect place(waveform->mapTo(rowAt(0), QPoint()), waveform->size());
            const QColor background = row.pixelColor(place.left() - 2, place.center().y());
            EXPECT_EQ(background, selected == 0 ? ThemeColors::of(editor->palette()).surfaceSelected
                                                : ThemeColors::of(editor->palette()).surface);
            double contrast = 0.0;
            for (int x = place.left(); x <= place.right(); ++x)
                contrast = std::max(contrast, contrastRatio(row.pixelColor(x, place.center().y()), background));
            EXPECT_GE(contrast, 3.0) << "line " << selected + 1 << " selected, " << background.name().toStdString();
        }
    }
}

TEST_F(ScriptEditorLooksTest, FocusedControlsLookDifferent) {
    controller->lines().setNotes(idAt(0), QStringLiteral("Softer."));
    QWidgetList controls;
    for (QWidget *widget : editor->findChildren<QWidget *>()) {
        const bool isControl =
            qobject_cast<QAbstractButton *>(widget) != nullptr || qobject_cast<WaveformBarsView *>(widget) != nullptr ||
            qobject_cast<NotesField *>(widget) != nullptr || qobject_cast<QTabBar *>(widget) != nullptr;
        if (isControl && widget->isVisible() && widget->isEnabled() && widget->focusPolicy() != Qt::NoFocus)
            controls.append(widget);
    }
    ASSERT_GE(controls.size(), 9);
    for (QWidget *control : controls) {
        focusList();
        const QImage without = control->grab().toImage();
        control->setFocus(Qt::TabFocusReason);
        // The tab bar shows its focus ring only after a key press.
        QTest::keyClick(control, Qt::Key_Shift);
        EXPECT_NE(control->grab().toImage(), without) << control->accessibleName().toStdString();
    }
}

TEST_F(ScriptEditorLooksTest, AppearanceChangesWhileVisible) {
    const auto background = [&] { return editor->grab().toImage().pixelColor(2, editor->height() / 2); };
    Theme::apply(Appearance::Dark);
    QCoreApplication::processEvents();
    EXPECT_EQ(background(), ThemeColors::dark().window);
    Theme::apply(Appearance::Light);
    QCoreApplication::processEvents();
    EXPECT_EQ(background(), ThemeColors::light().window);
}

} // namespace
} // namespace orlenta::shell
