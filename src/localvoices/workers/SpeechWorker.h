#pragma once

#include <QtCore/QByteArray>

namespace orlenta::localvoices {

/// Exit codes of a worker process.
enum class WorkerExit { Done = 0, Failed = 1, UnusableInput = 3 };

/// The main function of a worker process: reads one job from standard input and writes the audio to standard output,
/// or, on failure, a sentence with the reason. Standard error is left to the libraries.
[[nodiscard]] WorkerExit runSpeechWorker();

} // namespace orlenta::localvoices
