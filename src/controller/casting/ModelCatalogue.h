#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace orlenta::controller {

/// One speech model, as the inspector offers it.
struct ModelDescription {
    /// What a line's settings store.
    QString key;
    QString title;
    QString subtitle;
    QString description;
    /// Paragraphs of the information pop-over.
    QStringList information;
};

enum class SettingsControlKind { Mode, Stability, Similarity, Style, Speed };

/// One control below the model choice.
struct SettingsControl {
    SettingsControlKind kind;
    QString title;
    /// Slider range and default; all 0 for the mode picker.
    double minimum;
    double maximum;
    double defaultValue;
    QStringList help;
    /// Keys of the models that show it.
    QStringList models;
};

/// One hint of the delivery tips sheet.
struct DeliveryTip {
    QString title;
    QString text;
    /// Keys of the models it is marked for; empty for all.
    QStringList models;
};

/// The models, their settings controls and their texts, in the order shown.
class ModelCatalogue final {
public:
    ModelCatalogue() = delete;

    [[nodiscard]] static const QList<ModelDescription> &models();
    /// The model of that key; an unknown key is spoken by the first, so it gives that.
    [[nodiscard]] static const ModelDescription &model(const QString &key);
    /// The words of the mode picker; "Natural" is the default.
    [[nodiscard]] static const QStringList &modes();
    [[nodiscard]] static const QList<SettingsControl> &controls();
    [[nodiscard]] static QList<SettingsControl> controlsFor(const QString &modelKey);

    [[nodiscard]] static QString tipsTitle();
    [[nodiscard]] static QString tipsLead();
    /// "WORKS ON ALL MODELS".
    [[nodiscard]] static QString commonTipsHeading();
    /// "{model} ONLY".
    [[nodiscard]] static QString modelTipsHeading(const ModelDescription &model);
    [[nodiscard]] static const QList<DeliveryTip> &tips();
};

} // namespace orlenta::controller
