#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace orlenta::controller {

/// A speech model as shown in the inspector.
struct ModelDescription {
    /// The key stored in a line's settings.
    QString key;
    QString title;
    QString subtitle;
    QString description;
    /// Paragraphs of the information popover.
    QStringList information;
};

enum class SettingsControlKind { Mode, Stability, Similarity, Style, Speed };

/// A control below the model choice.
struct SettingsControl {
    SettingsControlKind kind;
    QString title;
    /// Slider range and default; all 0 for the mode picker.
    double minimum;
    double maximum;
    double defaultValue;
    QStringList help;
    /// Keys of the models that have it.
    QStringList models;
};

/// A hint in the delivery tips dialog.
struct DeliveryTip {
    QString title;
    QString text;
    /// Keys of the models it applies to; empty for all.
    QStringList models;
};

/// The models, their settings controls and their texts, in display order.
class ModelCatalogue final {
public:
    ModelCatalogue() = delete;

    [[nodiscard]] static const QList<ModelDescription> &models();
    /// The model with that key. An unknown key gives the first model, which also speaks such lines.
    [[nodiscard]] static const ModelDescription &model(const QString &key);
    /// The mode picker's items; "Natural" is the default.
    [[nodiscard]] static const QStringList &modes();
    [[nodiscard]] static const QList<SettingsControl> &controls();
    [[nodiscard]] static QList<SettingsControl> controlsFor(const QString &modelKey);

    [[nodiscard]] static QString tipsTitle();
    [[nodiscard]] static QString tipsLead();
    /// "WORKS ON ALL MODELS".
    [[nodiscard]] static QString commonTipsHeading();
    /// "{model} ONLY" for the models with these keys.
    [[nodiscard]] static QString modelTipsHeading(const QStringList &models);
    [[nodiscard]] static const QList<DeliveryTip> &tips();
};

} // namespace orlenta::controller
