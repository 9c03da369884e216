#pragma once

#include <QtCore/QList>
#include <QtCore/QObject>

#include "controller/document/Notices.h"

namespace orlenta::controller {
class ProjectSession;
}

namespace orlenta::shell {

class NoticeBar;
struct NoticeAction;

/// Shows the newest notice of a project in the bar, with what the user can do about it. Main thread; the session and
/// the bar outlive it.
class ProjectNotices final : public QObject {
    Q_OBJECT
public:
    ProjectNotices(controller::ProjectSession &session, NoticeBar &bar, QObject *parent = nullptr);

    /// Returns whether there was a notice to dismiss.
    bool dismiss();

private:
    void show();
    void showFolder(const QString &folder);
    [[nodiscard]] QList<NoticeAction> actionsFor(const controller::Notice &notice);

    controller::ProjectSession &m_session;
    NoticeBar &m_bar;
};

} // namespace orlenta::shell
