#pragma once
// Moving files to the desktop Trash in the freedesktop.org layout that file
// managers share, so that the user can bring them back from there.
// Qt's QFile::moveToTrash (6.4) writes the original path without the
// percent-encoding the .trashinfo file needs, so the format is written here.

#include <string>

#include "platform/file_ops.h"
#include "platform/ui_text.h"

namespace tivox {

// The home trash: $XDG_DATA_HOME/Trash, by default ~/.local/share/Trash.
// Empty when neither variable gives an absolute path.
std::string HomeTrashFolder();

// The trash at the top folder of a volume other than the home trash's:
// $topdir/.Trash/$uid when an administrator made $topdir/.Trash (a folder
// with the sticky bit, not a link), else $topdir/.Trash-$uid, made with mode
// 0700 when missing. Empty when neither can be used.
std::string VolumeTrashFolder(const std::string& topdir);

// "%XX" for every byte of `path` but letters, digits, "-._~" and "/".
std::string PercentEncodePath(const std::string& path);

// Moves the file at `path` into the home trash when it lies on the same
// volume, else into the trash of its own volume (a file is never copied).
// The info file (info/NAME.trashinfo with the original Path and the
// DeletionDate) is created exclusively first, under a name not yet taken in
// files/ or info/; the file is renamed to files/NAME after it. `trashed` gets
// that path. On failure the file stays where it was and `error` names it and
// the cause.
bool MoveToTrash(const std::string& path, std::string& trashed, UiText& error,
                 const std::string& homeTrash = HomeTrashFolder(), FileOps& ops = SystemFileOps());

} // namespace tivox
