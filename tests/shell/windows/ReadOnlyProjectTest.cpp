#include <gtest/gtest.h>

#include "controller/document/Notices.h"
#include "model/ProjectStore.h"
#include "shell/editor/NoticeBar.h"
#include "shell/editor/ScriptEditor.h"
#include "shell/ShellSession.h"
#include "shell/windows/ProjectWindow.h"
#include "shell/windows/ProjectWindows.h"
#include "support/SmallDisk.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

TEST(ReadOnlyProject, SaysSoWhenItIsOpened) {
    testing::SmallDisk disk(1'000'000);
    const base::Timestamp now = base::wholeSeconds(base::systemClock());
    const auto stored =
        model::ProjectStore::create(disk.path(u"Scene"_s), u"Scene"_s, model::Project::makeNew(u"Scene"_s, now), now);
    ASSERT_TRUE(stored);
    testing::ShellSession session;
    ProjectWindows windows(session.context);
    ASSERT_TRUE(windows.openProject(stored->folder));
    const auto notice = [&windows] { return windows.open().front()->controller().notices().current(); };
    EXPECT_FALSE(notice().has_value());
    ASSERT_TRUE(windows.open().front()->window().close());

    ASSERT_TRUE(disk.makeReadOnly(stored->folder));
    ASSERT_TRUE(windows.openProject(stored->folder));
    ASSERT_TRUE(notice().has_value());
    EXPECT_TRUE(notice()->text.startsWith(u"This project's folder can't be written to"_s));
    EXPECT_TRUE(windows.open().front()->window().editor().findChild<NoticeBar *>()->isVisible());
}

} // namespace
} // namespace orlenta::shell
