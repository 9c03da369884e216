#pragma once

#include <QtCore/QString>
#include <QtCore/QUrl>

/// The service's endpoint, and the web pages that messages point to.
namespace orlenta::speech {

/// The service's API endpoint.
[[nodiscard]] QUrl defaultEndpoint();
/// The service's page for editing a key.
[[nodiscard]] QString keySettingsAddress();
/// The service's page about the user's plan.
[[nodiscard]] QString planAddress();
/// Orlenta's page about the five permissions that a key needs.
[[nodiscard]] QString connectGuideAddress();

} // namespace orlenta::speech
