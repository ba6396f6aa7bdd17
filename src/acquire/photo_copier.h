#pragma once
// The walker that copies each photo it finds into a target folder through
// the transfer's CopyPhoto, and moves the progress bar along.

#include <string>

#include "acquire/file_walker.h"

namespace tivox {

class CPhotoTransfer;

class CPhotoCopier : public CFileWalker {
public:
    explicit CPhotoCopier(std::string extension) : CFileWalker(std::move(extension)) {}

    void OnFile(const CFileFind& finder, int number) override;

    CPhotoTransfer* m_owner = nullptr;
    std::string m_targetFolder; // may change between two walks
};

} // namespace tivox
