#pragma once

#include <functional>
#include <optional>

#include <QtCore/QObject>
#include <QtCore/QUrl>

#include "base/Clock.h"
#include "controller/document/EditKey.h"
#include "model/Project.h"

namespace orlenta::controller {

/// The live records of one project, its dirty mark, and the services that every change of them uses. Facts that change
/// inside a Change are announced when the outermost one ends, so that no observer meets a half-made state. Main thread.
class Document final : public QObject {
    Q_OBJECT
public:
    /// What observers can be told of.
    enum class Fact : unsigned {
        Project = 1U << 0U,
        /// Tabs, active tab or the set of lines; what differs is found out when it is announced.
        Structure = 1U << 1U,
        UnsavedChanges = 1U << 2U,
        SpotError = 1U << 3U,
        TypingFlush = 1U << 4U,
        Selection = 1U << 5U,
        EditingLine = 1U << 6U,
        Runtime = 1U << 7U,
    };

    /// Holds back the announcements while it lives. They nest.
    class Change final {
    public:
        explicit Change(Document &document);
        ~Change();
        Change(const Change &) = delete;
        Change &operator=(const Change &) = delete;

    private:
        Document &m_document;
    };

    Document(model::Project project, QUrl projectURL, base::Clock clock, QObject *parent = nullptr);

    [[nodiscard]] const model::Project &project() const { return m_project; }
    [[nodiscard]] const QUrl &projectURL() const { return m_projectURL; }
    /// The project folder, or the empty text while there is none.
    [[nodiscard]] QString folder() const { return m_projectURL.toLocalFile(); }
    [[nodiscard]] bool hasUnsavedChanges() const { return m_hasUnsavedChanges; }
    [[nodiscard]] QString spotError() const { return m_spotError; }
    [[nodiscard]] int typingFlushVersion() const { return m_typingFlushVersion; }
    [[nodiscard]] base::Timestamp now() const { return base::wholeSeconds(m_clock); }
    [[nodiscard]] const model::ProjectLine *findLine(const model::LineId &id) const { return m_project.lines.find(id); }
    [[nodiscard]] const model::ProjectTab *activeTab() const;
    [[nodiscard]] qsizetype tabIndex(const model::TabId &id) const;
    /// The active tab's lines that exist, in display order.
    [[nodiscard]] const QList<model::LineId> &scriptLineIds() const;
    /// Position in scriptLineIds(), or -1.
    [[nodiscard]] qsizetype scriptIndexOf(const model::LineId &id) const;
    /// The next cast colour's index into the palette.
    [[nodiscard]] int nextColorIndex() const { return m_nextColorIndex; }
    [[nodiscard]] bool pronunciationDirty() const { return m_pronunciationDirty; }
    [[nodiscard]] int pronunciationRevision() const { return m_pronunciationRevision; }

    /// The records, for a change that leaves tabs and the set of lines as they are. Ends with commitChange().
    model::Project &edit(EditKey) { return m_project; }
    /// The records, for a change of tabs, active tab, or which lines there are.
    model::Project &restructure(EditKey);
    /// Applies `mutation` to the line of that id, dates the project and marks it dirty; nothing when the line has gone.
    void updateLine(const model::LineId &id, const std::function<void(model::ProjectLine &)> &mutation, EditKey key);
    /// Sets `modifiedAt` to now and marks the project dirty.
    void commitChange(EditKey);
    void markDirty(EditKey);
    void setClean(EditKey);
    void setNextColorIndex(int index, EditKey) { m_nextColorIndex = index; }
    /// The entries have changed: what the service holds of them is out of date.
    void invalidatePronunciations(EditKey);
    void setPronunciationDirty(bool dirty, EditKey) { m_pronunciationDirty = dirty; }
    void setSpotError(const QString &message);
    void bumpTypingFlushVersion(EditKey);
    void announce(Fact fact);

Q_SIGNALS:
    void projectChanged();
    void scriptLinesChanged();
    void tabsChanged();
    void activeTabIdChanged();
    void hasUnsavedChangesChanged();
    void spotErrorChanged();
    void typingFlushVersionChanged();
    void selectionChanged();
    void editingLineIdChanged();
    void runtimeChanged();

private:
    void flush();
    void emitStructure();

    model::Project m_project;
    QUrl m_projectURL;
    base::Clock m_clock;
    QString m_spotError;
    mutable std::optional<QList<model::LineId>> m_scriptLinesCache;
    QList<model::LineId> m_announcedScriptLines;
    QList<model::ProjectTab> m_announcedTabs;
    std::optional<model::TabId> m_announcedActiveTab;
    unsigned m_pending = 0;
    int m_changeDepth = 0;
    int m_typingFlushVersion = 0;
    int m_nextColorIndex = 1;
    int m_pronunciationRevision = 0;
    bool m_pronunciationDirty = true;
    bool m_hasUnsavedChanges = false;
};

} // namespace orlenta::controller
