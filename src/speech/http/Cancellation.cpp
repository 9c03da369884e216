#include "speech/http/Cancellation.h"

namespace orlenta::speech {

void Cancellation::cancel() {
    if (m_cancelled)
        return;
    m_cancelled = true;
    Q_EMIT cancelled();
}

} // namespace orlenta::speech
