#pragma once

#include <QtCore/QString>
#include <QtCore/QUrl>

/// The web addresses that the client talks to, and those that its sentences send the user to.
namespace orlenta::speech {

/// Where the service answers.
[[nodiscard]] QUrl defaultEndpoint();
/// The page of the service on which a key is edited.
[[nodiscard]] QString keySettingsAddress();
/// The page of the service that shows the user's plan.
[[nodiscard]] QString planAddress();
/// The product's own page about the five permissions a key needs.
[[nodiscard]] QString connectGuideAddress();

} // namespace orlenta::speech
