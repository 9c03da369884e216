#include "speech/http/OwnedFile.h"

#include <QtCore/QFile>

namespace orlenta::speech {

OwnedFile::~OwnedFile() {
    if (!m_isKept)
        QFile::remove(m_path);
}

} // namespace orlenta::speech
