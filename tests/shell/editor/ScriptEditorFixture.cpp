#include "shell/editor/ScriptEditorFixture.h"

#include <qcoro/qcorotask.h>

#include <cmath>
#include <vector>

#include "audio/files/WavFileWriter.h"
#include "controller/takes/TakeEditing.h"
#include "model/ProjectStore.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {

model::Project ScriptEditorFixture::projectWith(const QStringList &texts, const QStringList &cast) {
    const QStringList colors{QStringLiteral("#3FA7D6"), QStringLiteral("#E4572E"), QStringLiteral("#59C36A"),
                             QStringLiteral("#F2B134")};
    model::Project project = model::Project::makeNew(QStringLiteral("Scene"), base::Timestamp{});
    for (qsizetype index = 0; index < cast.size(); ++index)
        project.voices.append({model::VoiceId::create(), QStringLiteral("voice-%1").arg(index), cast.at(index),
                               cast.at(index), colors.at(index % colors.size())});
    project.lines = {};
    project.tabs.first().lineIds = {};
    for (qsizetype index = 0; index < texts.size(); ++index) {
        model::ProjectLine line = model::ProjectLine::makeNew();
        line.text = texts.at(index);
        if (!cast.isEmpty())
            line.voiceId = project.voices.at(index % cast.size()).id;
        project.appendLine(line);
    }
    return project;
}

void ScriptEditorFixture::open(model::Project project, const QSize &size) {
    const model::StoredProject stored = shell.store(QStringLiteral("Scene"), std::move(project));
    ASSERT_FALSE(stored.folder.isEmpty()) << "couldn't create the project folder";
    session = shell.openOffline(stored);
    controller = &session->controller();
    playback = &session->playback();
    editor = std::make_unique<ScriptEditor>(*session);
    editor->resize(size);
    editor->show();
    editor->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(editor.get()));
    focusList();
}

bool ScriptEditorFixture::hasCaret(qsizetype index) const {
    return QTest::qWaitFor([&] { return rowAt(index) != nullptr && rowAt(index)->textField().hasFocus(); }, 5000);
}

void ScriptEditorFixture::addTake(qsizetype index) {
    const QString path = shell.path(QStringLiteral("take.wav"));
    auto writer = audio::WavFileWriter::create(path, {.sampleRate = 8000, .channelCount = 1, .bitDepth = 16},
                                               audio::WavFileWriter::Placement::RenamedUnflushed);
    ASSERT_TRUE(writer);
    std::vector<double> tone(8000 * 3);
    for (size_t frame = 0; frame < tone.size(); ++frame) {
        const double t = static_cast<double>(frame) / 8000.0;
        tone[frame] = std::sin(t * 2800.0) * std::abs(std::sin(t * 2.3) * std::sin(t * 9.1 + 0.4));
    }
    ASSERT_TRUE(writer.value().writeFrames(std::span<const double>(tone)));
    ASSERT_TRUE(writer.value().finish());
    const model::ProjectLine line = *controller->lines().find(idAt(index));
    QCoro::waitFor(
        controller->takes().installGeneratedAudio(path, line.lineId, controller->takes().generationContext(line)));
    ASSERT_EQ(controller->spotError(), QString());
}

void ScriptEditorFixture::focusList() {
    editor->list().setFocus(Qt::OtherFocusReason);
}

QList<qsizetype> ScriptEditorFixture::selectedIndexes() const {
    QList<qsizetype> indexes;
    for (const model::LineId &id : controller->selection().selectedLinesInScript())
        indexes.append(controller->lines().indexInScript(id));
    return indexes;
}

} // namespace orlenta::shell
