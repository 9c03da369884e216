#pragma once

namespace orlenta::audio {

/// Whether this process may record from inputs.
enum class MicrophoneAuthorization { NotDetermined, Restricted, Denied, Authorized, Unknown };

} // namespace orlenta::audio
