#pragma once

#include <memory>

#include <gtest/gtest.h>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>

#include "audio/devices/AudioDeviceMonitor.h"
#include "audio/devices/OutputRoutingDiagnostics.h"
#include "audio/devices/SoundServer.h"
#include "audio/playback/PlaybackController.h"
#include "audio/recording/AudioInputRouteManager.h"
#include "audio/recording/MicrophonePermission.h"
#include "base/UserDefaults.h"
#include "controller/generation/LineGenerator.h"
#include "controller/ProjectController.h"
#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "model/Project.h"
#include "shell/editor/LineRow.h"
#include "shell/editor/ScriptEditor.h"
#include "shell/editor/ScriptListView.h"
#include "speech/account/ElevenLabsService.h"
#include "speech/account/KeychainHelper.h"

namespace orlenta::shell {

/// An editor on a real project in a folder of the test's own, shown and active.
class ScriptEditorFixture : public ::testing::Test {
protected:
    /// Makes no sound unless the address of a sound server is given.
    explicit ScriptEditorFixture(const QString &soundServer = {})
        : server(soundServer.isEmpty() ? QStringLiteral("unix:%1").arg(folder.filePath(QStringLiteral("no-server")))
                                       : soundServer) {}

    static model::Project projectWith(const QStringList &texts, const QStringList &cast = {QStringLiteral("Narrator")});

    void open(model::Project project, const QSize &size = {760, 600});
    [[nodiscard]] model::LineId idAt(qsizetype index) const { return controller->scriptLineIds().at(index); }
    [[nodiscard]] LineRow *rowAt(qsizetype index) const { return editor->list().rowFor(idAt(index)); }
    [[nodiscard]] QString textAt(qsizetype index) const { return controller->lines().find(idAt(index))->text; }
    /// Lets events run until the line's text has the caret.
    [[nodiscard]] bool hasCaret(qsizetype index) const;
    /// Gives the line a take: a second of a tone.
    void addTake(qsizetype index);
    void focusList();
    [[nodiscard]] QList<qsizetype> selectedIndexes() const;

    QTemporaryDir folder;
    base::UserDefaults defaults{folder.filePath(QStringLiteral("defaults.ini"))};
    audio::SoundServer server;
    audio::AudioDeviceMonitor monitor{server, defaults};
    audio::OutputRoutingDiagnostics diagnostics;
    audio::AudioInputRouteManager inputRoutes{server, defaults};
    audio::MicrophonePermission microphone{server};
    audio::PlaybackController playback{server, defaults, monitor, diagnostics};
    speech::KeychainHelper credentials;
    speech::ElevenLabsService service{defaults, credentials};
    std::unique_ptr<controller::ProjectController> controller;
    std::unique_ptr<controller::LineGenerator> generator;
    std::unique_ptr<ScriptEditor> editor;
};

} // namespace orlenta::shell
