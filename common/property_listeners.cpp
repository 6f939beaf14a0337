#include "common/property_listeners.h"

#include <condition_variable>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

#include "common/property_node_data.h"

namespace quill {
namespace {

struct Change {
    PropertyChangeInfo info;
    uint64_t end_id;  // listeners from here on were added after the change
};

}  // namespace

struct PropertyListeners::List {
    using Listener = std::shared_ptr<const PropertyListener>;

    void tell(PropertyNode& node, const Change& change);

    std::mutex mutex;  // of the next five
    std::map<uint64_t, Listener> listeners;
    uint64_t next_id = 1;
    uint64_t running_id = 0;  // 0: no listener runs
    std::thread::id running_thread;
    std::condition_variable returned;

    // Under the node's lock.
    std::deque<Change> waiting;
    bool delivering = false;

    class Call;
};

// One call of the first listener from `begin` to before `end`, if there is one. Until it ends, the listener
// is kept alive and its removal waits.
class PropertyListeners::List::Call {
  public:
    Call(List& list, uint64_t begin, uint64_t end) : list_(list) {
        const std::lock_guard lock(list_.mutex);
        const auto found = list_.listeners.lower_bound(begin);
        if (found == list_.listeners.end() || found->first >= end) return;
        id_ = found->first;
        listener_ = found->second;
        list_.running_id = id_;
        list_.running_thread = std::this_thread::get_id();
    }
    ~Call() {
        if (listener_ == nullptr) return;
        listener_.reset();  // with the mutex free: a destructor of its captures may use the list
        const std::lock_guard lock(list_.mutex);
        list_.running_id = 0;
        list_.returned.notify_all();
    }
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

    const PropertyListener* listener() const { return listener_.get(); }
    uint64_t id() const { return id_; }

  private:
    List& list_;
    Listener listener_;
    uint64_t id_ = 0;
};

// Listeners are added and removed during the calls, so each is looked up when the one before it has ended.
void PropertyListeners::List::tell(PropertyNode& node, const Change& change) {
    for (uint64_t next = 1;;) {
        const Call call(*this, next, change.end_id);
        if (call.listener() == nullptr) return;
        (*call.listener())(node, change.info);
        next = call.id() + 1;
    }
}

// A destructor of a listener's captures may add another listener, so the list is emptied until it stays
// empty.
PropertyListeners::~PropertyListeners() {
    List* const list = list_.load(std::memory_order_acquire);
    if (list == nullptr) return;
    while (!list->listeners.empty()) {
        const auto destroyed = std::exchange(list->listeners, {});
    }
    delete list;
}

// Created by the first thread that needs it.
PropertyListeners::List& PropertyListeners::list() {
    if (List* const made = list_.load(std::memory_order_acquire)) return *made;
    auto fresh = std::make_unique<List>();
    List* made = nullptr;
    if (list_.compare_exchange_strong(made, fresh.get(), std::memory_order_acq_rel)) return *fresh.release();
    return *made;
}

uint64_t PropertyListeners::add(PropertyListener listener) {
    if (!listener) return 0;
    auto shared = std::make_shared<const PropertyListener>(std::move(listener));
    List& list = this->list();
    const std::lock_guard lock(list.mutex);
    list.listeners.emplace(list.next_id, std::move(shared));
    return list.next_id++;
}

void PropertyListeners::remove(uint64_t id) {
    List* const list = list_.load(std::memory_order_acquire);
    if (list == nullptr || id == 0) return;
    std::map<uint64_t, List::Listener>::node_type removed;
    std::unique_lock lock(list->mutex);
    removed = list->listeners.extract(id);
    list->returned.wait(
        lock, [&] { return list->running_id != id || list->running_thread == std::this_thread::get_id(); });
}

bool PropertyListeners::empty() const {
    List* const list = list_.load(std::memory_order_acquire);
    if (list == nullptr) return true;
    const std::lock_guard lock(list->mutex);
    return list->listeners.empty();
}

void PropertyListeners::deliver(PropertyNode& node, const PropertyChangeInfo& info) {
    List& list = this->list();
    {
        const std::lock_guard lock(list.mutex);
        list.waiting.push_back({info, list.next_id});
    }
    if (list.delivering) return;

    struct Scope {
        List& list;
        ~Scope() {
            list.delivering = false;
            list.waiting.clear();
        }
    };
    list.delivering = true;
    const Scope scope{list};
    while (!list.waiting.empty()) {
        const Change change = std::move(list.waiting.front());
        list.waiting.pop_front();
        list.tell(node, change);
    }
}

}  // namespace quill
