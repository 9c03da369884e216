#include "shell/windows/NewProjectDialog.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include "model/ProjectStore.h"
#include "shell/controls/MessageBox.h"
#include "shell/controls/TextLabel.h"
#include "shell/theme/Theme.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

constexpr QSize newProjectSize(460, 350);

QFileDialog *folderDialog(QWidget *parent, const QString &title) {
    auto *dialog = new QFileDialog(parent, title);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    return dialog;
}

} // namespace

NewProjectDialog::NewProjectDialog(const Create &create, QWidget *parent)
    : QDialog(parent), m_create(create), m_name(new QLineEdit(u"Untitled Project"_s)),
      m_problem(new TextLabel({}, TextLabel::Style::Caption)), m_location(new QComboBox),
      m_createButton(new QPushButton(u"Create"_s)) {
    setWindowTitle(u"New project"_s);
    setAccessibleName(u"New project"_s);
    m_name->setAccessibleName(u"Project name"_s);
    m_name->setToolTip(u"The name of the project and its folder"_s);
    m_name->selectAll();
    m_location->setAccessibleName(u"Location"_s);
    m_location->setToolTip(u"The folder to create the project in"_s);
    m_location->addItem(defaultLocation(), defaultLocation());
    m_location->addItem(u"Prompt for location"_s);
    m_location->addItem(u"Choose…"_s);
    m_location->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_location->setMinimumContentsLength(20);
    auto *cancel = new QPushButton(u"Cancel"_s);
    cancel->setToolTip(u"Close without creating a project"_s);
    m_createButton->setToolTip(u"Create the project and open it"_s);
    m_createButton->setDefault(true);
    Theme::setRole(m_createButton, ButtonRole::Primary);

    const int unit = Theme::unit(this);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(unit * 6, unit * 6, unit * 6, unit * 5);
    layout->setSpacing(unit * 2);
    layout->addWidget(new TextLabel(u"New project"_s, TextLabel::Style::Title));
    layout->addSpacing(unit * 2);
    layout->addWidget(new TextLabel(u"PROJECT NAME"_s, TextLabel::Style::Section));
    layout->addWidget(m_name);
    layout->addWidget(m_problem);
    layout->addSpacing(unit);
    layout->addWidget(new TextLabel(u"LOCATION"_s, TextLabel::Style::Section));
    layout->addWidget(m_location);
    layout->addStretch();
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cancel);
    buttons->addWidget(m_createButton);
    layout->addLayout(buttons);
    setFixedSize(newProjectSize.expandedTo(minimumSizeHint()));

    connect(m_name, &QLineEdit::textChanged, this, &NewProjectDialog::showProblem);
    connect(m_location, &QComboBox::activated, this, &NewProjectDialog::chooseLocation);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_createButton, &QPushButton::clicked, this, &NewProjectDialog::createProject);
    showProblem();
}

QString NewProjectDialog::defaultLocation() {
    return QDir::homePath() + u"/Documents/Orlenta Projects"_s;
}

QString NewProjectDialog::nameProblem(const QString &name) {
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty())
        return u"Project name cannot be empty."_s;
    if (trimmed.contains(u'/') || trimmed.contains(u'\\') || trimmed.contains(u':'))
        return u"Project name cannot contain /, \\, or : characters."_s;
    return {};
}

void NewProjectDialog::showProblem() {
    const QString problem = nameProblem(m_name->text());
    m_problem->setText(problem);
    m_createButton->setEnabled(problem.isEmpty());
}

void NewProjectDialog::chooseLocation(int row) {
    if (row != m_location->count() - 1) {
        m_lastLocation = row;
        return;
    }
    m_location->setCurrentIndex(m_lastLocation);
    QFileDialog *dialog = folderDialog(this, u"Choose a location"_s);
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString &folder) {
        const int present = m_location->findData(folder);
        if (present < 0)
            m_location->insertItem(1, folder, folder);
        m_lastLocation = present < 0 ? 1 : present;
        m_location->setCurrentIndex(m_lastLocation);
    });
    dialog->open();
}

void NewProjectDialog::createProject() {
    if (!nameProblem(m_name->text()).isEmpty())
        return;
    if (const QString folder = m_location->currentData().toString(); !folder.isEmpty()) {
        createIn(folder);
        return;
    }
    QFileDialog *dialog = folderDialog(this, u"Choose a location"_s);
    connect(dialog, &QFileDialog::fileSelected, this, &NewProjectDialog::createIn);
    dialog->open();
}

void NewProjectDialog::createIn(const QString &parentFolder) {
    const QString name = model::ProjectStore::nameWithoutExtension(m_name->text());
    const QString folder = parentFolder + u'/' + name;
    if (QFileInfo::exists(folder)) {
        auto *box = new MessageBox(QMessageBox::Warning, this);
        box->addButton(QMessageBox::Ok);
        box->setMessage(QStringLiteral("A project named %1 already exists at this location.").arg(name),
                        u"Choose a different name or location."_s);
        box->open();
        return;
    }
    if (m_create(folder, name))
        accept();
}

} // namespace orlenta::shell
