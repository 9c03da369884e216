#include "shell/menus/MenuMnemonics.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include <QtCore/QPointer>
#include <QtCore/QSet>
#include <QtGui/QAction>
#include <QtWidgets/QMenu>

namespace orlenta::shell {
namespace {

/// The first free letter that begins a word, or else the first free letter or digit.
std::optional<qsizetype> freePlace(const QString &title, const QSet<QChar> &taken) {
    std::optional<qsizetype> inside;
    for (qsizetype at = 0; at < title.size(); ++at) {
        const QChar letter = title.at(at).toLower();
        if (!letter.isLetterOrNumber() || taken.contains(letter))
            continue;
        if (at == 0 || title.at(at - 1).isSpace())
            return at;
        if (!inside)
            inside = at;
    }
    return inside;
}

QString escaped(QString text) {
    return text.replace(u'&', QLatin1String("&&"));
}

/// The title as the menu shows it.
QString shownTitle(const QString &text) {
    QString shown;
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text.at(at) == u'&' && ++at == text.size())
            break;
        shown.append(text.at(at));
    }
    return shown;
}

qsizetype letterCount(const QString &text) {
    const QString shown = shownTitle(text).toLower();
    return QSet<QChar>(shown.begin(), shown.end()).size();
}

QString withMnemonic(const QString &title, QSet<QChar> &taken) {
    const auto place = freePlace(title, taken);
    if (!place)
        return escaped(title);
    taken.insert(title.at(*place).toLower());
    return escaped(title.left(*place)) + u'&' + escaped(title.mid(*place));
}

/// The titles before and after, for an action that is in the open menu.
struct Marked {
    QPointer<QAction> action;
    QString plain;
    QString marked;
};

} // namespace

void MenuMnemonics::follow(QMenu &menu) {
    const auto open = std::make_shared<QList<Marked>>();
    QObject::connect(&menu, &QMenu::aboutToShow, &menu, [&menu, open] {
        open->clear();
        QList<QAction *> items = menu.actions();
        items.removeIf([](const QAction *item) { return item->isSeparator(); });
        // Titles with the least choice come first.
        std::stable_sort(items.begin(), items.end(), [](const QAction *a, const QAction *b) {
            return letterCount(a->text()) < letterCount(b->text());
        });
        QSet<QChar> taken;
        for (QAction *action : std::as_const(items)) {
            const QString plain = action->text();
            action->setText(withMnemonic(shownTitle(plain), taken));
            open->append({action, plain, action->text()});
        }
    });
    QObject::connect(&menu, &QMenu::aboutToHide, &menu, [open] {
        for (const Marked &item : *open)
            // A title that has changed meanwhile is plain already.
            if (item.action != nullptr && item.action->text() == item.marked)
                item.action->setText(item.plain);
        open->clear();
    });
}

} // namespace orlenta::shell
