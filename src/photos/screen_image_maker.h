#pragma once
// Decodes the single view's picture of one photo on a thread of its own, so
// that neither a paint nor a key press waits for a full-size decode. Only the
// newest request counts: a result for a photo the user has already left is
// dropped. The owner asks with Request and collects with Take on its own
// thread; `ready` runs on the maker's thread when a result waits.

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "photos/scaled_loader.h"
#include "platform/bitmap.h"
#include "platform/geometry.h"

namespace tivox {

struct ScreenImage {
    std::string path;
    std::unique_ptr<Bitmap> image; // empty when the file cannot be read
    Size source;                   // the file's picture size
    std::string error;             // why it cannot be read
};

class CScreenImageMaker {
public:
    explicit CScreenImageMaker(std::function<void()> ready);
    ~CScreenImageMaker(); // stops after the decode in hand and joins
    CScreenImageMaker(const CScreenImageMaker&) = delete;
    CScreenImageMaker& operator=(const CScreenImageMaker&) = delete;

    // `path` fitted into `target`; replaces any earlier request.
    void Request(const std::string& path, Size target);
    // Forgets the request and any result not yet taken.
    void Cancel();
    // The result of the newest request, once made. False until then.
    bool Take(ScreenImage& out);
    // The same, but waits for the request in hand; false when there is none
    // or its result was taken already.
    bool Wait(ScreenImage& out);

private:
    void Run(std::stop_token stop);
    bool TakeLocked(ScreenImage& out);

    std::function<void()> m_ready;
    CScaledLoader m_loader; // the maker's thread only

    std::mutex m_lock;
    std::condition_variable_any m_wake;
    std::condition_variable m_done; // a result is in m_result
    std::string m_path;             // the newest request
    Size m_target;                  //
    std::uint64_t m_asked = 0;      // raised by each request and cancel
    std::uint64_t m_started = 0;    // the request the thread took last
    std::uint64_t m_finished = 0;   // the request m_result belongs to
    ScreenImage m_result;

    std::jthread m_thread; // last: it starts when everything above exists
};

} // namespace tivox
