#pragma once

#include <variant>

#include <qcoro/qcorotask.h>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>

#include "model/Ids.h"

namespace orlenta::controller {

class Document;
class MediaFiles;
class Selection;
class TakeEditing;

/// How several selected lines are handed on: joined into one clip, or each by itself.
enum class MultiLineOutput { Continuous, Individual };

/// Copies the selected lines' audio to where the user wants it. Failures go to the controller's spotError. Main thread;
/// joining runs on a worker.
class Exporting final : public QObject {
    Q_OBJECT
public:
    struct Clip {
        model::LineId lineId;
        QString path;
        QString clipName;
    };
    /// Nothing is selected, a selected line has no audio, or joining failed.
    struct NothingToExport {};
    /// One file, for a save dialog.
    struct SingleFile {
        QString path;
        /// With the extension ".wav".
        QString suggestedName;
    };
    /// Several files, for a folder dialog.
    struct Folder {
        QList<Clip> clips;
    };
    using Plan = std::variant<NothingToExport, SingleFile, Folder>;

    struct Parts {
        Document &document;
        Selection &selection;
        MediaFiles &media;
        TakeEditing &takes;
    };

    explicit Exporting(const Parts &parts, QObject *parent = nullptr);

    /// The selected lines that there are, in display order; empty unless every one has audio.
    [[nodiscard]] QList<Clip> linesToExport() const;
    /// Prepares an export of the selection; joins the lines' audio where `output` asks for one clip.
    QCoro::Task<Plan> plan(MultiLineOutput output);
    /// Copies the prepared file to the chosen path, in place of what is there.
    void exportTo(const SingleFile &file, const QString &destination);
    /// Copies the clips under their own names; a name that is taken gets a number.
    void exportToFolder(const Folder &folder, const QString &destination);

    /// "Export Audio", the title of both dialogs.
    [[nodiscard]] static QString dialogTitle();
    /// "Choose a folder for the {n} exported clips."
    [[nodiscard]] static QString folderMessage(const Folder &folder);

private:
    Parts m_parts;
};

} // namespace orlenta::controller
