#include "controller/document/Document.h"

#include <algorithm>
#include <utility>

namespace orlenta::controller {
namespace {

bool sameTabBar(const QList<model::ProjectTab> &a, const QList<model::ProjectTab> &b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto &left, const auto &right) {
        return left.id == right.id && left.name == right.name;
    });
}

} // namespace

Document::Change::Change(Document &document) : m_document(document) {
    ++m_document.m_changeDepth;
}

Document::Change::~Change() {
    if (--m_document.m_changeDepth == 0)
        m_document.flush();
}

Document::Document(model::Project project, QUrl projectURL, base::Clock clock, QObject *parent)
    : QObject(parent), m_project(std::move(project)), m_projectURL(std::move(projectURL)), m_clock(std::move(clock)) {
    m_announcedScriptLines = scriptLineIds();
    m_announcedTabs = m_project.tabs;
    m_announcedActiveTab = m_project.activeTabId;
}

const model::ProjectTab *Document::activeTab() const {
    return m_project.activeTabId ? m_project.findTab(*m_project.activeTabId) : nullptr;
}

qsizetype Document::tabIndex(const model::TabId &id) const {
    const auto &tabs = m_project.tabs;
    const auto found = std::find_if(tabs.begin(), tabs.end(), [&](const auto &tab) { return tab.id == id; });
    return found == tabs.end() ? -1 : found - tabs.begin();
}

const QList<model::LineId> &Document::scriptLineIds() const {
    if (m_scriptLinesCache)
        return *m_scriptLinesCache;
    const model::ProjectTab *tab = activeTab();
    QList<model::LineId> ids = tab != nullptr ? tab->lineIds : QList<model::LineId>();
    const auto isUnknown = [this](const model::LineId &id) { return !m_project.lines.contains(id); };
    // The copy shares the tab's list as long as nothing has to be left out.
    if (std::any_of(ids.cbegin(), ids.cend(), isUnknown))
        ids.removeIf(isUnknown);
    m_scriptLinesCache = ids;
    return *m_scriptLinesCache;
}

qsizetype Document::scriptIndexOf(const model::LineId &id) const {
    return scriptLineIds().indexOf(id);
}

model::Project &Document::restructure(EditKey) {
    m_scriptLinesCache.reset();
    announce(Fact::Structure);
    return m_project;
}

void Document::updateLine(const model::LineId &id, const std::function<void(model::ProjectLine &)> &mutation,
                          EditKey key) {
    const Change change(*this);
    const qsizetype index = m_project.lines.indexOf(id);
    if (index < 0)
        return;
    model::ProjectLine line = m_project.lines.at(index);
    const std::int64_t order = line.order;
    mutation(line);
    Q_ASSERT(line.lineId == id);
    const bool moved = line.order != order;
    m_project.lines.replace(index, std::move(line));
    // Lines are in order at all times, so only another number can put them out of it.
    if (moved)
        m_project.lines.renumberByOrder();
    commitChange(key);
}

void Document::commitChange(EditKey key) {
    m_project.modifiedAt = now();
    markDirty(key);
}

void Document::markDirty(EditKey) {
    const Change change(*this);
    announce(Fact::Project);
    if (std::exchange(m_hasUnsavedChanges, true))
        return;
    announce(Fact::UnsavedChanges);
}

void Document::setClean(EditKey) {
    const Change change(*this);
    if (std::exchange(m_hasUnsavedChanges, false))
        announce(Fact::UnsavedChanges);
}

void Document::invalidatePronunciations(EditKey) {
    m_pronunciationDirty = true;
    ++m_pronunciationRevision;
}

void Document::setSpotError(const QString &message) {
    const Change change(*this);
    if (std::exchange(m_spotError, message) != message)
        announce(Fact::SpotError);
}

void Document::bumpTypingFlushVersion(EditKey) {
    const Change change(*this);
    ++m_typingFlushVersion;
    announce(Fact::TypingFlush);
}

void Document::announce(Fact fact) {
    Q_ASSERT(m_changeDepth > 0);
    m_pending |= static_cast<unsigned>(fact);
}

// An observer may change the document again: that is a change of its own, announced by itself.
void Document::flush() {
    const unsigned pending = std::exchange(m_pending, 0U);
    const auto has = [pending](Fact fact) { return (pending & static_cast<unsigned>(fact)) != 0; };
    if (has(Fact::Structure))
        emitStructure();
    if (has(Fact::Runtime))
        Q_EMIT runtimeChanged();
    if (has(Fact::TypingFlush))
        Q_EMIT typingFlushVersionChanged();
    if (has(Fact::Project))
        Q_EMIT projectChanged();
    if (has(Fact::Selection))
        Q_EMIT selectionChanged();
    if (has(Fact::EditingLine))
        Q_EMIT editingLineIdChanged();
    if (has(Fact::UnsavedChanges))
        Q_EMIT hasUnsavedChangesChanged();
    if (has(Fact::SpotError))
        Q_EMIT spotErrorChanged();
}

void Document::emitStructure() {
    const bool tabs = !sameTabBar(std::exchange(m_announcedTabs, m_project.tabs), m_project.tabs);
    const bool active = std::exchange(m_announcedActiveTab, m_project.activeTabId) != m_project.activeTabId;
    const bool lines = std::exchange(m_announcedScriptLines, scriptLineIds()) != scriptLineIds();
    if (tabs)
        Q_EMIT tabsChanged();
    if (active)
        Q_EMIT activeTabIdChanged();
    if (lines || active)
        Q_EMIT scriptLinesChanged();
}

} // namespace orlenta::controller
