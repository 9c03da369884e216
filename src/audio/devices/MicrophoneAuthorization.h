#pragma once

namespace orlenta::audio {

/// Whether a process may listen to inputs.
enum class MicrophoneAuthorization { NotDetermined, Restricted, Denied, Authorized, Unknown };

} // namespace orlenta::audio
