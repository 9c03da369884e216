#pragma once

#include <QtWidgets/QDialog>

namespace orlenta::shell {

struct AppContext;

/// The application's preferences. Every change takes effect and is stored immediately.
class SettingsDialog final : public QDialog {
    Q_OBJECT
public:
    explicit SettingsDialog(const AppContext &context, QWidget *parent = nullptr);

protected:
    void changeEvent(QEvent *event) override;

private:
    /// Aligns the labels of all sections in one column.
    void alignLabels();
};

} // namespace orlenta::shell
