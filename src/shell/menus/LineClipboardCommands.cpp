#include "shell/menus/LineClipboardCommands.h"

#include <QtCore/QMimeData>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>

#include "controller/ProjectController.h"
#include "controller/script/LineClipboard.h"

namespace orlenta::shell {
namespace {

bool writeLines(const QByteArray &bytes) {
    auto *data = new QMimeData;
    data->setData(controller::LineClipboard::clipboardType(), bytes);
    QGuiApplication::clipboard()->setMimeData(data);
    const QMimeData *written = QGuiApplication::clipboard()->mimeData();
    return written != nullptr && written->data(controller::LineClipboard::clipboardType()) == bytes;
}

} // namespace

bool LineClipboardCommands::cut(const controller::ProjectController &controller) {
    return controller.clipboard().cutLines(writeLines);
}

bool LineClipboardCommands::copy(const controller::ProjectController &controller) {
    const auto lines = controller.clipboard().copiedLines();
    return lines && writeLines(*lines);
}

bool LineClipboardCommands::paste(const controller::ProjectController &controller) {
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    return data != nullptr && controller.clipboard().pasteLines(data->data(controller::LineClipboard::clipboardType()));
}

} // namespace orlenta::shell
