#include <set>

#include <gtest/gtest.h>
#include <QtGui/QAction>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>

#include "controller/ProjectController.h"
#include "shell/editor/list/ScriptListView.h"
#include "shell/editor/ScriptCommands.h"
#include "shell/editor/ScriptEditor.h"
#include "shell/ShellSession.h"
#include "shell/windows/ProjectWindow.h"

namespace orlenta {
namespace {

using controller::ProjectChange;
using shell::LineRow;
using shell::ProjectWindow;
using testing::ShellSession;

constexpr int lineCount = 10'000;

model::Project longProject() {
    model::Project project = model::Project::makeNew(QStringLiteral("Long"), base::Timestamp{});
    for (int index = 0; index < lineCount; ++index) {
        model::ProjectLine line = model::ProjectLine::makeNew();
        line.text = QStringLiteral("Line %1").arg(index);
        project.appendLine(line);
    }
    return project;
}

/// The widgets that were painted, apart from a row and what lies under it.
class PaintedElsewhere final : public QObject {
public:
    explicit PaintedElsewhere(const LineRow &row) : m_row(row) { qApp->installEventFilter(this); }

    [[nodiscard]] QStringList names() const { return {m_names.begin(), m_names.end()}; }
    [[nodiscard]] bool isRowPainted() const { return m_isRowPainted; }

protected:
    bool eventFilter(QObject *object, QEvent *event) override {
        const auto *widget = qobject_cast<const QWidget *>(object);
        if (event->type() != QEvent::Paint || widget == nullptr)
            return false;
        if (m_row.isAncestorOf(widget))
            m_isRowPainted = true;
        else if (widget != &m_row && !widget->isAncestorOf(&m_row))
            m_names.insert(QString::fromLatin1(widget->metaObject()->className()));
        return false;
    }

private:
    const LineRow &m_row;
    bool m_isRowPainted = false;
    std::set<QString> m_names;
};

} // namespace

TEST(TypingCost, AKeyAmongTenThousandLinesChangesOneLineAndRedrawsOneRow) {
    ShellSession shell;
    const auto session = shell.openOffline(shell.store(QStringLiteral("Long"), longProject()));
    ProjectWindow window(shell.context, *session);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    const model::LineId id = session->controller().scriptLineIds().at(2);
    shell::ScriptEditor &editor = window.editor();
    editor.commands().edit(id);
    LineRow *row = editor.list().rowFor(id);
    ASSERT_NE(row, nullptr);
    // The first key also marks the project as changed and offers Undo. Editing has opened the tag palette, which makes
    // its room in several rounds of events.
    QTest::keyClick(&row->textField(), Qt::Key_A);
    for (int round = 0; round < 5; ++round) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }

    std::vector<ProjectChange> changes;
    QObject::connect(&session->controller(), &controller::ProjectController::changed, &window,
                     [&changes](const ProjectChange &change) { changes.push_back(change); });
    QStringList actionsChanged;
    const auto actions = window.findChildren<QAction *>();
    ASSERT_FALSE(actions.isEmpty());
    for (QAction *action : actions)
        QObject::connect(action, &QAction::changed, &window,
                         [&actionsChanged, action] { actionsChanged.append(action->text()); });
    const PaintedElsewhere painted(*row);
    QTest::keyClick(&row->textField(), Qt::Key_B);
    QCoreApplication::processEvents();

    std::vector<model::LineId> lines;
    for (const ProjectChange &change : changes) {
        if (const auto *changed = std::get_if<controller::LinesChanged>(&change)) {
            EXPECT_EQ(changed->fields(), controller::LineField::Text);
            lines.insert(lines.end(), changed->lines.keyBegin(), changed->lines.keyEnd());
        } else {
            EXPECT_TRUE(std::holds_alternative<controller::TextSelectionChanged>(change)) << change.index();
        }
    }
    EXPECT_EQ(lines, std::vector<model::LineId>{id});
    EXPECT_EQ(actionsChanged, QStringList());
    EXPECT_EQ(painted.names(), QStringList());
    EXPECT_TRUE(painted.isRowPainted());
}

} // namespace orlenta
