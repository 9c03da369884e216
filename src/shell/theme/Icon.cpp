#include "shell/theme/Icon.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtGui/QGuiApplication>
#include <QtGui/QIconEngine>
#include <QtGui/QPainter>
#include <QtGui/QPixmapCache>
#include <QtSvg/QSvgRenderer>

#include "shell/theme/ThemeColors.h"

// The linker drops a static library's resources unless they are referenced.
static void initIconResources() {
    Q_INIT_RESOURCE(icons);
}

namespace orlenta::shell {
namespace {

QString iconPath(const QString &name) {
    return QStringLiteral(":/icons/%1.svg").arg(name);
}

// Since Qt 6.8, QIconEngine::scaledPixmap gets the size in device-independent pixels.
constexpr bool scaledSizeIsInDevicePixels = QT_VERSION < QT_VERSION_CHECK(6, 8, 0);

QColor tintColor(Icon::Tint tint, QIcon::Mode mode) {
    const QPalette palette = QGuiApplication::palette();
    const ThemeColors &colors = ThemeColors::of(palette);
    if (mode == QIcon::Disabled)
        return colors.textDisabled;
    if (mode == QIcon::Selected)
        return colors.onAccent;
    switch (tint) {
    case Icon::Tint::Text:
        return colors.text;
    case Icon::Tint::Muted:
        return colors.textMuted;
    case Icon::Tint::Accent:
        return colors.accent;
    case Icon::Tint::OnAccent:
        return colors.onAccent;
    case Icon::Tint::Warning:
        return colors.warning;
    case Icon::Tint::Danger:
        return colors.danger;
    }
    return colors.text;
}

class TintedSvgEngine final : public QIconEngine {
public:
    TintedSvgEngine(QString name, Icon::Tint tint) : m_name(std::move(name)), m_tint(tint) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override {
        const qreal ratio = painter->device()->devicePixelRatioF();
        QPixmap pixmap = rendered(rect.size() * ratio, mode);
        pixmap.setDevicePixelRatio(ratio);
        painter->drawPixmap(rect.topLeft(), pixmap);
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State) override { return rendered(size, mode); }

    // QIcon sets the device pixel ratio of the result.
    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State, qreal scale) override {
        return rendered(scaledSizeIsInDevicePixels ? size : size * scale, mode);
    }

    QIconEngine *clone() const override { return new TintedSvgEngine(*this); }
    QString key() const override { return QStringLiteral("orlenta-tinted-svg"); }
    bool isNull() override { return false; }

private:
    [[nodiscard]] QPixmap rendered(const QSize &pixels, QIcon::Mode mode) const {
        const QColor color = tintColor(m_tint, mode);
        const QString key = QStringLiteral("orlenta-icon/%1/%2x%3/%4")
                                .arg(m_name)
                                .arg(pixels.width())
                                .arg(pixels.height())
                                .arg(color.rgba(), 0, 16);
        QPixmap pixmap;
        if (QPixmapCache::find(key, &pixmap))
            return pixmap;
        QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QSvgRenderer renderer(iconPath(m_name));
        renderer.setAspectRatioMode(Qt::KeepAspectRatio);
        QPainter painter(&image);
        renderer.render(&painter, QRectF(QPointF(), QSizeF(pixels)));
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(image.rect(), color);
        painter.end();
        pixmap = QPixmap::fromImage(image);
        QPixmapCache::insert(key, pixmap);
        return pixmap;
    }

    QString m_name;
    Icon::Tint m_tint;
};

} // namespace

QIcon Icon::named(const QString &name, Tint tint) {
    initIconResources();
    if (!QFile::exists(iconPath(name)))
        return {};
    return QIcon(new TintedSvgEngine(name, tint));
}

QStringList Icon::names() {
    initIconResources();
    QStringList names;
    for (const QString &file : QDir(QStringLiteral(":/icons")).entryList(QDir::Files))
        names.append(file.chopped(4));
    return names;
}

} // namespace orlenta::shell
