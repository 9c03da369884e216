#pragma once

#include <QtCore/QByteArray>

namespace orlenta::localvoices {

/// How a worker process ends, as its exit code.
enum class WorkerExit { Done = 0, Failed = 1, UnusableInput = 3 };

/// A worker process's whole life: reads one job from standard input to its end and writes the audio to standard output,
/// or the sentence that says why there is none. Standard error is the libraries'.
[[nodiscard]] WorkerExit runSpeechWorker();

} // namespace orlenta::localvoices
