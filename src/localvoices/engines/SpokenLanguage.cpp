#include "localvoices/engines/SpokenLanguage.h"

#include <algorithm>
#include <array>

#include <QtCore/QLatin1String>

namespace orlenta::localvoices {

namespace {

// Languages of espeak-ng 1.51 whose names are their ISO codes.
constexpr std::array sameNames = std::to_array<const char *>(
    {"af", "am", "an", "ar", "as", "az", "ba", "be", "bg", "bn", "bs", "ca", "cs", "cv", "cy", "da", "de", "el",
     "en", "eo", "es", "et", "eu", "fa", "fi", "fr", "ga", "gd", "gn", "gu", "he", "hi", "hr", "ht", "hu", "hy",
     "ia", "id", "io", "is", "it", "ja", "ka", "kk", "kl", "kn", "ko", "ku", "ky", "la", "lb", "lt", "lv", "mi",
     "mk", "ml", "mr", "ms", "mt", "my", "nb", "ne", "nl", "om", "or", "pa", "pl", "pt", "ro", "ru", "sd", "si",
     "sk", "sl", "sq", "sr", "sv", "sw", "ta", "te", "th", "tk", "tn", "tr", "tt", "ug", "uk", "ur", "uz", "vi"});

} // namespace

QByteArray espeakLanguage(const QString &code) {
    if (code == QLatin1String("zh"))
        return "cmn";
    if (code == QLatin1String("no"))
        return "nb";
    const auto found = std::find_if(sameNames.begin(), sameNames.end(),
                                    [&code](const char *name) { return code == QLatin1String(name); });
    return found == sameNames.end() ? QByteArray() : QByteArray(*found);
}

} // namespace orlenta::localvoices
