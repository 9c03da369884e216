#include <gtest/gtest.h>
#include <QtGui/QAccessible>
#include <QtGui/QWheelEvent>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>

#include "shell/editor/row/WaveformBarsView.h"
#include "shell/theme/ThemeColors.h"

namespace orlenta::shell {
namespace {

/// The number of painted pixels in the column at a bar's centre.
int barHeightAt(const QImage &image, int bar, double pitch, double barWidth, double inset) {
    const int x = static_cast<int>(inset + pitch * bar + barWidth / 2.0);
    int painted = 0;
    for (int y = 0; y < image.height(); ++y)
        painted += qAlpha(image.pixel(x, y)) > 128 ? 1 : 0;
    return painted;
}

QImage pictureOf(WaveformBarsView &view) {
    QImage image(view.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    view.render(&image, {}, {}, QWidget::RenderFlags());
    return image;
}

class WaveformBarsViewTest : public ::testing::Test {
protected:
    void SetUp() override {
        view.resize(100, 40);
        view.setBars(4.0, 4.0);
        view.setMaxBarHeight(30.0);
        view.setColor(Qt::black, Qt::white);
        view.setShowsProgress(true);
        view.setProgress(1.0, RowPlayback::Current);
    }
    WaveformBarsView view;
};

TEST_F(WaveformBarsViewTest, ShowsAsManyBarsAsFit) {
    EXPECT_EQ(view.barCount(), 12);
    view.resize(3, 40);
    EXPECT_EQ(view.barCount(), 1);
}

TEST_F(WaveformBarsViewTest, BarsAreAsTallAsTheirSamplesAndAlwaysVisible) {
    view.setSamples({0.0F, 0.5F, 1.0F});
    const QImage image = pictureOf(view);
    const double inset = (100.0 - (4.0 * 12 + 4.0 * 11)) / 2.0;
    EXPECT_EQ(barHeightAt(image, 0, 8.0, 4.0, inset), 2);
    EXPECT_EQ(barHeightAt(image, 5, 8.0, 4.0, inset), 15);
    EXPECT_EQ(barHeightAt(image, 11, 8.0, 4.0, inset), 30);
}

TEST_F(WaveformBarsViewTest, ShowsTheFallbackHeightsWithoutSamples) {
    view.setFallbackHeights({6.0, 10.0});
    const QImage image = pictureOf(view);
    EXPECT_EQ(barHeightAt(image, 0, 8.0, 4.0, 4.0), 6);
    EXPECT_EQ(barHeightAt(image, 1, 8.0, 4.0, 4.0), 10);
}

TEST_F(WaveformBarsViewTest, BarsAfterThePlayheadAreFainter) {
    view.setSamples({1.0F});
    view.setProgress(0.5, RowPlayback::Current);
    const QImage image = pictureOf(view);
    EXPECT_EQ(qAlpha(image.pixel(6, 20)), 255);
    EXPECT_LT(qAlpha(image.pixel(94, 20)), 128);
}

TEST_F(WaveformBarsViewTest, ALineOfFullHeightMarksThePlayhead) {
    view.setSamples({0.1F});
    const auto topAt = [&](double progress) {
        view.setProgress(progress, RowPlayback::Current);
        return pictureOf(view).pixelColor(static_cast<int>(progress * 98.0), 0);
    };
    for (const double progress : {0.0, 0.5, 1.0})
        EXPECT_EQ(topAt(progress), ThemeColors::of(view.palette()).text) << progress;
    view.setShowsProgress(false);
    EXPECT_EQ(topAt(0.5).alpha(), 0);
}

TEST_F(WaveformBarsViewTest, IgnoresTheWheel) {
    QWheelEvent event({50.0, 20.0}, {50.0, 20.0}, {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(&view, &event);
    EXPECT_FALSE(event.isAccepted());
    EXPECT_EQ(view.progress(), 1.0);
    view.setProgress(0.5, RowPlayback::Current);
    QApplication::sendEvent(&view, &event);
    EXPECT_EQ(view.progress(), 0.5);
}

TEST_F(WaveformBarsViewTest, BarsHaveContrastOnEveryBackgroundInEveryCastColour) {
    view.setSamples({1.0F});
    const auto contrastAt = [&](int x, const QColor &background) {
        QImage image(view.size(), QImage::Format_RGB32);
        image.fill(background);
        view.render(&image, {}, {}, QWidget::RenderFlags());
        return contrastRatio(image.pixelColor(x, 20), background);
    };
    for (const ThemeColors *colors : {&ThemeColors::light(), &ThemeColors::dark()})
        for (const QColor &background : {colors->surface, colors->surfaceSelected, colors->field})
            for (const QColor &cast : {QColor(0x3FA7D6), QColor(0xF2B134), QColor(0x101010), QColor(0xFFFFFF),
                                       colors->accent, colors->textMuted}) {
                const std::string what = (cast.name() + QStringLiteral(" on ") + background.name()).toStdString();
                view.setColor(cast, background);
                view.setShowsProgress(false);
                EXPECT_GE(contrastAt(6, background), 3.0) << what;
                view.setShowsProgress(true);
                view.setProgress(0.5, RowPlayback::Current);
                EXPECT_GE(contrastAt(94, background), 2.5) << what;
                EXPECT_GE(contrastAt(6, background), 1.4 * contrastAt(94, background)) << what;
            }
}

TEST_F(WaveformBarsViewTest, AssistiveTechnologyReadsAndSetsThePlayheadInPercent) {
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(&view);
    ASSERT_NE(interface, nullptr);
    EXPECT_EQ(interface->role(), QAccessible::Slider);
    QAccessibleValueInterface *value = interface->valueInterface();
    ASSERT_NE(value, nullptr);
    view.setProgress(0.25, RowPlayback::Current);
    EXPECT_EQ(value->currentValue().toInt(), 25);
    EXPECT_EQ(value->maximumValue().toInt(), 100);
    EXPECT_EQ(interface->text(QAccessible::Value), QStringLiteral("25%"));
    QSignalSpy seek(&view, &WaveformBarsView::seekRequested);
    value->setCurrentValue(70);
    ASSERT_EQ(seek.count(), 1);
    EXPECT_DOUBLE_EQ(seek.takeFirst().first().toDouble(), 0.7);
    value->setCurrentValue(1000);
    EXPECT_DOUBLE_EQ(seek.takeFirst().first().toDouble(), 1.0);
}

TEST_F(WaveformBarsViewTest, ThePositionIsAnnouncedAtRestAndAfterSeeksButNotWhilePlaying) {
    QAccessibleValueInterface *value = QAccessible::queryAccessibleInterface(&view)->valueInterface();
    QSignalSpy announced(&view, &WaveformBarsView::positionAnnounced);
    for (int step = 0; step <= 50; ++step)
        view.setProgress(step / 100.0, RowPlayback::Playing);
    EXPECT_EQ(announced.count(), 0);
    EXPECT_EQ(value->currentValue().toInt(), 50);
    QTest::keyClick(&view, Qt::Key_Right);
    ASSERT_EQ(announced.count(), 1);
    EXPECT_EQ(announced.takeFirst().first().toInt(), 52);
    view.setProgress(0.6, RowPlayback::Playing);
    view.setProgress(0.6, RowPlayback::Current);
    view.setProgress(0.6, RowPlayback::Current);
    ASSERT_EQ(announced.count(), 1);
    EXPECT_EQ(announced.takeFirst().first().toInt(), 60);
}

TEST_F(WaveformBarsViewTest, KeysSeekFromTheShownPositionAndStopAtTheEnds) {
    struct Case {
        Qt::Key key;
        double from;
        double to;
    };
    for (const Case &each :
         {Case{Qt::Key_Right, 0.5, 0.52}, Case{Qt::Key_Up, 0.5, 0.52}, Case{Qt::Key_Left, 0.5, 0.48},
          Case{Qt::Key_Down, 0.01, 0.0}, Case{Qt::Key_PageUp, 0.5, 0.6}, Case{Qt::Key_PageDown, 0.5, 0.4},
          Case{Qt::Key_Home, 0.5, 0.0}, Case{Qt::Key_End, 0.5, 1.0}}) {
        QSignalSpy seek(&view, &WaveformBarsView::seekRequested);
        view.setProgress(each.from, RowPlayback::Playing);
        QTest::keyClick(&view, each.key);
        ASSERT_EQ(seek.count(), 1) << each.key;
        EXPECT_NEAR(seek.first().first().toDouble(), each.to, 1e-9) << each.key;
    }
    QSignalSpy seek(&view, &WaveformBarsView::seekRequested);
    QTest::keyClick(&view, Qt::Key_End);
    EXPECT_EQ(seek.count(), 0);
}

TEST_F(WaveformBarsViewTest, TimeRunsFromLeftToRightEvenInARightToLeftWindow) {
    QWidget window;
    window.setLayoutDirection(Qt::RightToLeft);
    view.setParent(&window);
    QSignalSpy seek(&view, &WaveformBarsView::seekRequested);
    QTest::mouseClick(&view, Qt::LeftButton, {}, {25, 20});
    ASSERT_EQ(seek.count(), 1);
    EXPECT_DOUBLE_EQ(seek.takeFirst().first().toDouble(), 0.25);
    view.setProgress(0.5, RowPlayback::Current);
    QTest::keyClick(&view, Qt::Key_Right);
    ASSERT_EQ(seek.count(), 1);
    EXPECT_GT(seek.takeFirst().first().toDouble(), 0.5);
    view.setParent(nullptr);
}

} // namespace
} // namespace orlenta::shell
