#include "shell/editor/ProjectNotices.h"

#include <QtCore/QUrl>
#include <QtGui/QDesktopServices>

#include "controller/direction/DirectionRecordings.h"
#include "controller/generation/LineGenerator.h"
#include "controller/ProjectController.h"
#include "controller/ProjectSession.h"
#include "shell/editor/NoticeBar.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {

using controller::Notice;

ProjectNotices::ProjectNotices(controller::ProjectSession &session, NoticeBar &bar, QObject *parent)
    : QObject(parent), m_session(session), m_bar(bar) {
    connect(&session.controller().notices(), &controller::Notices::changed, this, &ProjectNotices::show);
    connect(&bar, &NoticeBar::dismissed, this, &ProjectNotices::dismiss);
    show();
}

bool ProjectNotices::dismiss() {
    controller::Notices &notices = m_session.controller().notices();
    const auto notice = notices.current();
    if (notice)
        notices.withdraw(notice->kind);
    return notice.has_value();
}

void ProjectNotices::show() {
    const auto notice = m_session.controller().notices().current();
    if (!notice) {
        m_bar.setMessage({});
        return;
    }
    const bool isGood = notice->kind == Notice::Kind::ExportFinished;
    m_bar.setMessage(notice->text, isGood ? NoticeBar::Tone::Information : NoticeBar::Tone::Warning,
                     actionsFor(*notice));
}

QList<NoticeAction> ProjectNotices::actionsFor(const Notice &notice) {
    QList<NoticeAction> actions;
    if (notice.kind == Notice::Kind::RecordingKept)
        actions.append({u"Use Recording"_s, u"Try again to make it its line's direction"_s,
                        [this] { m_session.recordings().kept().putOnLines(); }});
    if (notice.kind == Notice::Kind::TakesUnstored)
        actions.append({u"Store Again"_s, u"Try again to store the takes in the project"_s,
                        [this] { m_session.generator().unstoredTakes().storeAgain(); }});
    if (!notice.folder.isEmpty())
        actions.append({u"Show in Folder"_s, u"Open the folder in the file manager"_s,
                        [this, folder = notice.folder] { showFolder(folder); }});
    return actions;
}

void ProjectNotices::showFolder(const QString &folder) {
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(folder)))
        m_session.controller().setSpotError(u"The folder couldn't be opened: %1"_s.arg(folder));
}

} // namespace orlenta::shell
