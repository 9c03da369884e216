#include "localvoices/server/AccountBook.h"

#include <QtCore/QDateTime>

#include "localvoices/voices/VoiceCatalogue.h"

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

AccountBook::AccountBook(qint64 characterLimit)
    : m_limit(characterLimit), m_since(QDateTime::currentSecsSinceEpoch()) {}

QJsonObject AccountBook::subscriptionJson() const {
    return {
        // Clients check for "pro" in the tier before they request PCM, which is available here.
        {u"tier"_s, u"local_pro"_s},
        {u"character_count"_s, m_used},
        {u"character_limit"_s, m_limit},
        {u"max_character_limit_extension"_s, QJsonValue::Null},
        {u"max_credit_limit_extension"_s, 0},
        {u"can_extend_character_limit"_s, false},
        {u"allowed_to_extend_character_limit"_s, false},
        {u"next_character_count_reset_unix"_s, QJsonValue::Null},
        {u"voice_slots_used"_s, 0},
        {u"professional_voice_slots_used"_s, 0},
        {u"professional_voice_slots_used_in_workspace"_s, 0},
        {u"voice_limit"_s, static_cast<int>(voiceCatalogue().size())},
        {u"max_voice_add_edits"_s, QJsonValue::Null},
        {u"voice_add_edit_counter"_s, 0},
        {u"professional_voice_limit"_s, 0},
        {u"can_extend_voice_limit"_s, false},
        {u"can_use_instant_voice_cloning"_s, false},
        {u"can_use_professional_voice_cloning"_s, false},
        {u"currency"_s, QJsonValue::Null},
        {u"current_overage"_s, QJsonObject{{u"amount"_s, u"0"_s}, {u"currency"_s, u"usd"_s}}},
        {u"status"_s, u"active"_s},
        {u"billing_period"_s, QJsonValue::Null},
        {u"character_refresh_period"_s, QJsonValue::Null},
    };
}

QJsonObject AccountBook::userJson() const {
    return {
        {u"user_id"_s, u"local"_s},
        {u"workspace_id"_s, u"local"_s},
        {u"subscription"_s, subscriptionJson()},
        {u"is_new_user"_s, false},
        {u"can_use_delayed_payment_methods"_s, false},
        {u"is_onboarding_completed"_s, true},
        {u"is_onboarding_checklist_completed"_s, true},
        {u"first_name"_s, u"Local voices"_s},
        {u"is_api_key_hashed"_s, false},
        {u"xi_api_key_preview"_s, QJsonValue::Null},
        {u"created_at"_s, m_since},
        {u"seat_type"_s, u"workspace_admin"_s},
        {u"show_compliance_terms"_s, false},
    };
}

} // namespace orlenta::localvoices
