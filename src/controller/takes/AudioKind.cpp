#include "controller/takes/AudioKind.h"

namespace orlenta::controller {

QString audioKindPath(AudioKind kind) {
    switch (kind) {
    case AudioKind::Generated:
        return QStringLiteral("Audio Files/Generated");
    case AudioKind::SourceRecording:
        return QStringLiteral("Audio Files/Recordings");
    }
    Q_UNREACHABLE();
}

} // namespace orlenta::controller
