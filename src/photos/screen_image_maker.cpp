#include "photos/screen_image_maker.h"

#include <utility>

namespace tivox {

CScreenImageMaker::CScreenImageMaker(std::function<void()> ready)
    : m_ready(std::move(ready)), m_thread([this](std::stop_token stop) { Run(stop); }) {}

CScreenImageMaker::~CScreenImageMaker() {
    m_thread.request_stop();
    m_wake.notify_all();
}

void CScreenImageMaker::Request(const std::string& path, Size target) {
    {
        std::lock_guard lock(m_lock);
        m_path = path;
        m_target = target;
        ++m_asked;
        m_result = {};
    }
    m_wake.notify_all();
}

void CScreenImageMaker::Cancel() {
    std::lock_guard lock(m_lock);
    m_path.clear();
    ++m_asked;
    m_result = {};
}

bool CScreenImageMaker::Take(ScreenImage& out) {
    std::lock_guard lock(m_lock);
    return TakeLocked(out);
}

bool CScreenImageMaker::Wait(ScreenImage& out) {
    std::unique_lock lock(m_lock);
    m_done.wait(lock, [this] { return m_finished == m_asked || m_path.empty(); });
    return TakeLocked(out);
}

bool CScreenImageMaker::TakeLocked(ScreenImage& out) {
    if (m_finished != m_asked || !m_result.image)
        return false;
    out = std::move(m_result);
    m_result = {};
    return true;
}

void CScreenImageMaker::Run(std::stop_token stop) {
    std::unique_lock lock(m_lock);
    while (!stop.stop_requested()) {
        if (m_started == m_asked || m_path.empty()) {
            m_wake.wait(lock, stop, [this] { return m_started != m_asked && !m_path.empty(); });
            continue;
        }
        const std::uint64_t request = m_started = m_asked;
        const std::string path = m_path;
        const Size target = m_target;
        lock.unlock();
        ScreenImage made{path, std::make_unique<Bitmap>(), {}, {}};
        m_loader.LoadInto(path, target, *made.image, made.source, made.error);
        lock.lock();
        if (request != m_asked)
            continue; // the user has moved on
        m_result = std::move(made);
        m_finished = request;
        m_done.notify_all();
        lock.unlock();
        if (m_ready)
            m_ready();
        lock.lock();
    }
}

} // namespace tivox
