#include "common/property_listeners.h"

#include <utility>

namespace quill {

uint64_t PropertyListeners::add(PropertyListener listener) {
    listeners_.emplace(next_id_, std::make_shared<const PropertyListener>(std::move(listener)));
    return next_id_++;
}

void PropertyListeners::remove(uint64_t id) {
    // Taken out before it dies: what it captured may use the node while being destroyed.
    const auto removed = listeners_.extract(id);
}

void PropertyListeners::deliver(PropertyNode& node, const PropertyChangeInfo& info) {
    waiting_.push_back({info, next_id_});
    if (delivering_) return;

    struct Scope {
        PropertyListeners& self;
        ~Scope() {
            self.delivering_ = false;
            self.waiting_.clear();
        }
    };
    delivering_ = true;
    const Scope scope{*this};
    while (!waiting_.empty()) {
        const Change change = std::move(waiting_.front());
        waiting_.pop_front();
        tell(node, change);
    }
}

// Listeners come and go during the calls, and when one that removed itself dies after its own: each is held
// while it runs, and the next is looked up only when it has been let go.
void PropertyListeners::tell(PropertyNode& node, const Change& change) {
    uint64_t last = 0;
    for (auto next = listeners_.begin(); next != listeners_.end() && next->first < change.end_id;
         next = listeners_.upper_bound(last)) {
        last = next->first;
        const std::shared_ptr<const PropertyListener> listener = next->second;
        (*listener)(node, change.info);
    }
}

}  // namespace quill
