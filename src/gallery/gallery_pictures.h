#pragma once
// The pictures of a gallery made on both cores: each chosen photo is copied
// at photo size with its thumbnail (one decode, CScaledCopier) on a
// PhotoPool, one thread per core. The calling thread alone reads the photo
// list, steps the progress and stops the run between photos.

#include <string>
#include <vector>

#include "imageops/photo_pool.h"
#include "imageops/selection_pass.h"

namespace tivox {

class IEditHost;
class IStepProgress;
struct COperation;

// The files of the photos that the "Process:" boxes choose, in list order.
// User-interface thread.
std::vector<std::string> ChosenPhotoFiles(const ProcessScope& scope, IEditHost& window);

// Writes the copies that the scaled-copy operation `copies` asks for of each
// photo file at `quality`, one step of `progress` per photo as it finishes.
// After a cancel the photos in hand still finish and no other starts. The
// failures come in the photos' order.
PassResult WriteGalleryPictures(const std::vector<std::string>& photos, const COperation& copies,
                                int quality, IStepProgress& progress,
                                int threads = PhotoPool::DefaultThreads());

} // namespace tivox
