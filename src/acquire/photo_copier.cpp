#include "acquire/photo_copier.h"

#include "acquire/photo_transfer.h"

namespace tivox {

void CPhotoCopier::OnFile(const CFileFind& finder, int number) {
    if (!m_owner)
        return;
    m_owner->CopyPhoto(finder.GetFilePath(), finder.GetFileName(), m_targetFolder);
    // The number restarts in each sub-folder, and the bar follows it.
    m_owner->Progress().SetPos(number);
}

} // namespace tivox
