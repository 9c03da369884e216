#pragma once

#include <functional>

#include <QtWidgets/QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace orlenta::shell {

/// Asks for the name and location of a new project.
class NewProjectDialog final : public QDialog {
    Q_OBJECT
public:
    /// Creates and opens the project in that folder with that name. On false the dialog stays open.
    using Create = std::function<bool(const QString &folder, const QString &name)>;

    explicit NewProjectDialog(const Create &create, QWidget *parent = nullptr);

    [[nodiscard]] QLineEdit *nameField() const { return m_name; }
    [[nodiscard]] QPushButton *createButton() const { return m_createButton; }
    /// Why the name is invalid; empty if it's valid.
    [[nodiscard]] static QString nameProblem(const QString &name);

    /// The default parent folder of new projects.
    [[nodiscard]] static QString defaultLocation();

private:
    void showProblem();
    void chooseLocation(int row);
    void createProject();
    void createIn(const QString &parentFolder);

    Create m_create;
    QLineEdit *m_name;
    QLabel *m_problem;
    QComboBox *m_location;
    QPushButton *m_createButton;
    int m_lastLocation = 0;
};

} // namespace orlenta::shell
