#include "package/node_registry.h"

namespace brimwave {

int NodeRegistry::Find(const Animatable* object) const {
    const auto found = ids_.find(object);
    return found == ids_.end() ? 0 : found->second;
}

int NodeRegistry::Add(const Animatable* object) {
    order_.push_back(object);
    const int id = static_cast<int>(order_.size());
    ids_.emplace(object, id);
    return id;
}

void NodeRegistry::RollBack(size_t mark) {
    while (order_.size() > mark) {
        ids_.erase(order_.back());
        order_.pop_back();
    }
}

} // namespace brimwave
