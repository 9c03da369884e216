#include "shell/windows/ErrorAlerts.h"

#include <algorithm>
#include <utility>

#include <QtWidgets/QPushButton>

#include "shell/controls/MessageBox.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {

ErrorAlerts::ErrorAlerts(QWidget &window) : QObject(&window), m_window(window) {}

QMessageBox *ErrorAlerts::box() const {
    return m_box;
}

void ErrorAlerts::show(const Alert &alert) {
    const qsizetype read = isClosing() ? 1 : 0;
    const auto same = std::find_if(m_alerts.begin() + read, m_alerts.end(),
                                   [&](const Alert &other) { return other.source == alert.source; });
    if (same != m_alerts.end())
        *same = alert;
    else
        m_alerts.append(alert);
    if (m_box == nullptr)
        showNext();
    else if (read == 0)
        fill(m_alerts.first());
}

void ErrorAlerts::withdraw(AlertSource source) {
    const qsizetype read = isClosing() ? 1 : 0;
    if (m_box != nullptr && read == 0 && m_alerts.first().source == source) {
        m_alerts.first().dismissed = {};
        m_box->accept();
        return;
    }
    m_alerts.erase(std::remove_if(m_alerts.begin() + read, m_alerts.end(),
                                  [source](const Alert &alert) { return alert.source == source; }),
                   m_alerts.end());
}

// The user has dismissed the box but it isn't finished yet. New failures must not update it any more.
bool ErrorAlerts::isClosing() const {
    return m_box != nullptr && !m_box->isVisible();
}

void ErrorAlerts::showNext() {
    if (m_alerts.isEmpty())
        return;
    auto *box = new MessageBox(QMessageBox::Warning, &m_window);
    box->addButton(QMessageBox::Ok)->setToolTip(u"Dismiss this message (Esc)"_s);
    m_box = box;
    fill(m_alerts.first());
    connect(box, &QMessageBox::finished, this, [this] {
        const qsizetype action = m_actionButtons.indexOf(m_box->clickedButton());
        m_actionButtons.clear();
        m_box = nullptr;
        const Alert done = m_alerts.takeFirst();
        if (done.dismissed)
            done.dismissed();
        if (action >= 0)
            done.actions.at(action).run();
        if (m_box == nullptr)
            showNext();
    });
    box->open();
}

void ErrorAlerts::fill(const Alert &alert) {
    for (QAbstractButton *button : std::exchange(m_actionButtons, {})) {
        m_box->removeButton(button);
        delete button;
    }
    for (const Action &action : alert.actions) {
        QPushButton *button = m_box->addButton(action.text, QMessageBox::ActionRole);
        button->setToolTip(action.tip);
        m_actionButtons.append(button);
    }
    m_box->setMessage(alert.title, alert.detail);
}

} // namespace orlenta::shell
