#include "engine/reader.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <system_error>
#include <thread>

namespace {

// How long the end of the program waits for a job that was told to stop.
constexpr std::chrono::milliseconds kPatience{100};

}  // namespace

// One thread and its queue. Shared with the thread itself, which may outlive the reader.
struct Reader::Worker {
  struct Item {
    ReadWork work;
    std::function<void()> ended;
    std::shared_ptr<LongJob> job;
  };
  std::mutex guard;
  std::condition_variable changed;
  std::deque<Item> queue;
  std::shared_ptr<LongJob> running;
  bool quit = false;
  bool over = false;  // the thread does nothing any more
  bool givenUp = false;
  std::shared_ptr<std::atomic<int>> givenUpCount;
  OriginMaker makeOrigin;
  std::thread thread;
};

void Reader::RunWorker(const std::shared_ptr<Worker>& worker) {
  ByteSource source(worker->makeOrigin());
  std::unique_lock lock(worker->guard);
  for (;;) {
    worker->changed.wait(lock, [&] { return worker->quit || !worker->queue.empty(); });
    if (worker->quit) break;
    Worker::Item item = std::move(worker->queue.front());
    worker->queue.pop_front();
    worker->running = item.job;
    lock.unlock();
    item.job->started = true;
    item.work(source, *item.job);
    source.Close();
    item.work = nullptr;
    item.job->finished = true;
    if (item.ended) item.ended();
    lock.lock();
    worker->running = nullptr;
  }
  worker->over = true;
  if (worker->givenUp) --*worker->givenUpCount;
  worker->changed.notify_all();
}

Reader::Reader(OriginMaker makeOrigin)
    : makeOrigin_(std::move(makeOrigin)), givenUp_(std::make_shared<std::atomic<int>>(0)) {}

Reader::~Reader() {
  Stop();
}

std::shared_ptr<LongJob> Reader::Start(ReadWork work, std::function<void()> ended) {
  if (worker_ == nullptr) {
    if (*givenUp_ >= kMostGivenUp) return nullptr;
    auto worker = std::make_shared<Worker>();
    worker->givenUpCount = givenUp_;
    worker->makeOrigin = makeOrigin_;
    try {
      worker->thread = std::thread([worker] { RunWorker(worker); });
    } catch (const std::system_error&) {
      return nullptr;
    }
    worker_ = std::move(worker);
  }
  auto job = std::make_shared<LongJob>();
  const std::scoped_lock lock(worker_->guard);
  worker_->queue.push_back({std::move(work), std::move(ended), job});
  worker_->changed.notify_all();
  return job;
}

void Reader::GiveUp() {
  if (worker_ == nullptr) return;
  {
    const std::scoped_lock lock(worker_->guard);
    if (worker_->running != nullptr) worker_->running->givenUp = worker_->running->stop = true;
    for (const Worker::Item& waiting : worker_->queue)
      waiting.job->givenUp = true;
    worker_->queue.clear();
    worker_->quit = true;
    worker_->givenUp = true;
    ++*givenUp_;
    worker_->changed.notify_all();
  }
  worker_->thread.detach();
  worker_ = nullptr;
}

int Reader::GivenUp() const {
  return *givenUp_;
}

void Reader::Stop() {
  if (worker_ == nullptr) return;
  bool over = false;
  {
    std::unique_lock lock(worker_->guard);
    if (worker_->running != nullptr) worker_->running->stop = true;
    worker_->queue.clear();
    worker_->quit = true;
    worker_->changed.notify_all();
    over = worker_->changed.wait_for(lock, kPatience, [&] { return worker_->over; });
  }
  if (over) {
    worker_->thread.join();
  } else {
    worker_->thread.detach();
  }
  worker_ = nullptr;
}
