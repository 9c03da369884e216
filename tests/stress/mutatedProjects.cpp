#include <cstdlib>
#include <string>

#include <gtest/gtest.h>
#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QTemporaryDir>

#include "controller/document/TypingSession.h"
#include "controller/document/UndoManager.h"
#include "controller/RandomOperations.h"
#include "controller/ScriptProject.h"
#include "model/ProjectJson.h"
#include "model/SampleDocuments.h"

// Damages a project file in random places, opens what is still readable, edits it, undoes and redoes everything, and
// reads back what would be saved. Run as: mutated_projects [projects] [first seed]
namespace orlenta {
namespace {

int projects = 300;
unsigned firstSeed = 1;

constexpr int operationsPerProject = 30;

/// Damages a document but leaves it JSON: repeats, removes and swaps its parts, and replaces values with odd ones.
class JsonDamage final {
public:
    explicit JsonDamage(unsigned seed) : m_random(seed) {}

    [[nodiscard]] QByteArray damaged(const QByteArray &document) {
        QJsonValue root = QJsonDocument::fromJson(document).object();
        collectIds(root);
        for (unsigned changes = 1 + below(5); changes > 0; --changes)
            root = changed(root);
        return QJsonDocument(root.toObject()).toJson(QJsonDocument::Compact);
    }

private:
    [[nodiscard]] unsigned below(qsizetype limit) {
        return static_cast<unsigned>(m_random() % static_cast<unsigned>(limit));
    }

    static bool isId(const QString &text) { return !QUuid::fromString(text).isNull(); }

    static bool isWordOrDate(const QString &text) {
        static const QStringList words{QStringLiteral("text"),     QStringLiteral("voice"), QStringLiteral("simple"),
                                       QStringLiteral("advanced"), QStringLiteral("cmu"),   QStringLiteral("ipa")};
        return words.contains(text) || QDateTime::fromString(text, Qt::ISODate).isValid();
    }

    void collectIds(const QJsonValue &value) {
        if (value.isString() && isId(value.toString()))
            m_ids.append(value.toString());
        for (const QJsonValue &element : value.toArray())
            collectIds(element);
        const QJsonObject object = value.toObject();
        for (const QString &key : object.keys())
            collectIds(object.value(key));
    }

    [[nodiscard]] QJsonValue changed(const QJsonValue &value) {
        if (value.isObject() && !value.toObject().isEmpty())
            return changedObject(value.toObject());
        if (value.isArray())
            return changedArray(value.toArray());
        return below(40) == 0 ? QJsonValue() : changedScalar(value);
    }

    [[nodiscard]] QJsonValue changedObject(QJsonObject object) {
        const QStringList keys = object.keys();
        const QString key = keys.at(below(keys.size()));
        if (below(60) == 0)
            object.remove(key);
        else
            object.insert(key, changed(object.value(key)));
        return object;
    }

    [[nodiscard]] QJsonValue changedArray(QJsonArray array) {
        if (array.isEmpty())
            return array;
        const auto at = static_cast<qsizetype>(below(array.size()));
        switch (below(10)) {
        case 0:
            array.removeAt(at);
            break;
        case 1:
        case 2:
            array.insert(static_cast<qsizetype>(below(array.size() + 1)), QJsonValue(array.at(at)));
            break;
        case 3:
            array.append(array.takeAt(at));
            break;
        case 4:
            return below(4) == 0 ? QJsonArray() : array;
        default:
            array.replace(at, changed(array.at(at)));
        }
        return array;
    }

    [[nodiscard]] QJsonValue changedScalar(const QJsonValue &value) {
        static const double numbers[] = {0, -1, 1, 7, 1e15, -1e15, 0.5, 1e300, 5e-324};
        constexpr qsizetype wholeNumbers = 6;
        static const QString texts[] = {QString(),
                                        QStringLiteral(" "),
                                        QStringLiteral("[tag. [x] \r\n\r Mr. S. Then? No!\u2028"),
                                        QStringLiteral("\uFEFF\u0000\uFFFC\u202E"),
                                        QStringLiteral("../../etc/x.wav"),
                                        QStringLiteral("Default"),
                                        QString(5000, u'\u0301'),
                                        QStringLiteral("voice"),
                                        QStringLiteral("2024-05-31T12:34:56Z")};
        if (value.isBool())
            return !value.toBool();
        // A wrong value in most of these would only make the file unreadable.
        const bool staysValid = below(10) != 0;
        if (value.isDouble())
            return numbers[below(staysValid ? wholeNumbers : std::ssize(numbers))];
        if (staysValid && isWordOrDate(value.toString()))
            return value;
        if (isId(value.toString()))
            return m_ids.at(below(m_ids.size()));
        return texts[below(std::ssize(texts))];
    }

    std::mt19937 m_random;
    QStringList m_ids;
};

model::Project sample() {
    model::Project project = model::fullProject();
    for (int copies = 0; copies < 3; ++copies) {
        const std::vector<const model::ProjectLine *> lines = project.linesInOrder();
        for (size_t i = 0; i < 2; ++i) {
            model::ProjectLine line = *lines.at(i);
            line.lineId = model::LineId::create();
            project.appendLine(line);
        }
    }
    return project;
}

/// What undoing everything must restore, as text. Notes, the selection, the active tab and the date aren't part of it.
std::string restorable(model::Project project) {
    project.modifiedAt = {};
    project.selection = {};
    project.activeTabId.reset();
    QList<model::LineId> ids;
    project.lines.forEach([&ids](const model::ProjectLine &line) { ids.append(line.lineId); });
    for (const model::LineId &id : std::as_const(ids))
        project.lines.update(id, [](model::ProjectLine &line) { line.notes.clear(); });
    return model::encodeProject(project).toStdString();
}

void useProject(const model::Project &project, unsigned seed) {
    controller::ProjectController controller(project, {}, [] { return std::chrono::system_clock::time_point{}; });
    controller::UndoManager &undo = controller.undoManager();
    test::RandomOperations operations(controller, seed);
    test::expectSound(controller);
    const std::string opened = restorable(controller.project());
    for (int i = 0; i < operationsPerProject; ++i) {
        if (operations.pick(5) == 0)
            operations.type(operations.someLine());
        else
            operations.edit();
        test::expectSound(controller);
    }
    controller.typing().commit();
    const std::string edited = restorable(controller.project());
    while (undo.canUndo())
        undo.undo();
    EXPECT_EQ(restorable(controller.project()), opened);
    while (undo.canRedo())
        undo.redo();
    EXPECT_EQ(restorable(controller.project()), edited);
    test::expectSound(controller);

    const QByteArray saved = model::encodeProject(controller.project());
    const auto read = model::decodeProject(saved, {});
    ASSERT_TRUE(read);
    EXPECT_EQ(read.value(), controller.project());
    EXPECT_EQ(model::encodeProject(read.value()), saved);
}

TEST(MutatedProjects, OpenEditUndoAndSaveLikeAnyOther) {
    const QByteArray document = model::encodeProject(sample());
    int readable = 0;
    for (int i = 0; i < projects && !::testing::Test::HasFailure(); ++i) {
        const unsigned seed = firstSeed + static_cast<unsigned>(i);
        SCOPED_TRACE(seed);
        const auto project = model::decodeProject(JsonDamage(seed).damaged(document), {});
        if (!project)
            continue;
        ++readable;
        useProject(project.value(), seed);
    }
    std::printf("%d of %d damaged projects were readable\n", readable, projects);
    // Otherwise the damage is too heavy to test anything behind the reader.
    EXPECT_GE(readable, projects / 3);
}

} // namespace
} // namespace orlenta

int main(int argc, char **argv) {
    const QTemporaryDir home;
    for (const char *variable : {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"})
        ::setenv(variable, home.path().toLocal8Bit().constData(), 1);
    const QCoreApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    if (argc > 1)
        orlenta::projects = std::atoi(argv[1]);
    if (argc > 2)
        orlenta::firstSeed = static_cast<unsigned>(std::atoi(argv[2]));
    return RUN_ALL_TESTS();
}
