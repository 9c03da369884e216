#pragma once

#include <QtWidgets/QDialog>

namespace orlenta::shell {

struct AppContext;

/// The application's preferences. Each takes effect, and is stored, as soon as it is chosen.
class SettingsDialog final : public QDialog {
    Q_OBJECT
public:
    explicit SettingsDialog(const AppContext &context, QWidget *parent = nullptr);

protected:
    void changeEvent(QEvent *event) override;

private:
    /// One column of labels across all sections.
    void alignLabels();
};

} // namespace orlenta::shell
