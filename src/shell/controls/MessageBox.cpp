#include "shell/controls/MessageBox.h"

#include <QtCore/QStringList>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

#include "shell/controls/ShownText.h"
#include "shell/controls/WholeTextDialog.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {

MessageBox::MessageBox(Icon icon, QWidget *parent) : QMessageBox(parent) {
    setAttribute(Qt::WA_DeleteOnClose);
    setIcon(icon);
    setWindowTitle(u"Orlenta"_s);
    setTextFormat(Qt::PlainText);
}

void MessageBox::setMessage(const QString &text, const QString &detail) {
    m_text = text;
    m_detail = detail;
    setText(shownStart(text, shownNotice));
    setAccessibleName(shownName(text));

    // Qt makes this label together with its first text, and neither follows the box's text format nor asks before it
    // opens links. A blank creates it.
    if (informativeText().isEmpty())
        setInformativeText(u" "_s);
    for (QLabel *label : findChildren<QLabel *>()) {
        label->setTextFormat(Qt::PlainText);
        label->setOpenExternalLinks(false);
    }
    QStringList parts{shownStart(detail, shownMessage)};
    for (const QString &part : {shownPart(text, shownNotice), shownPart(detail, shownMessage)})
        if (!part.isEmpty())
            parts.append(part);
    const bool isCut = parts.size() > 1;
    setInformativeText(parts.join(u"\n\n"_s));
    if (isCut && m_showAll == nullptr) {
        m_showAll = addButton(u"Show All"_s, ActionRole);
        m_showAll->setToolTip(u"Show the whole message"_s);
        // A button of a message box closes it.
        disconnect(m_showAll, &QAbstractButton::clicked, nullptr, nullptr);
        connect(m_showAll, &QAbstractButton::clicked, this, &MessageBox::showWholeText);
    }
    if (m_showAll != nullptr)
        m_showAll->setVisible(isCut);
}

void MessageBox::showWholeText() {
    const QString whole = m_detail.isEmpty() ? m_text : m_text + u"\n\n"_s + m_detail;
    (new WholeTextDialog(windowTitle(), whole, WholeTextDialog::Use::Read, this))->open();
}

} // namespace orlenta::shell
