#pragma once
#include <cstddef>
#include <memory_resource>
#include <unordered_map>
#include <vector>

class Animatable;

namespace brimwave {

/// Which host objects a package already holds as nodes. Ids count from 1 in the order in which
/// nodes are first written.
class NodeRegistry {
  public:
    NodeRegistry() : ids_(&memory_) {}
    NodeRegistry(const NodeRegistry&) = delete;
    NodeRegistry& operator=(const NodeRegistry&) = delete;

    /// 0 when the object has no node yet.
    [[nodiscard]] int Find(const Animatable* object) const;
    /// Registers a new object and returns its id.
    int Add(const Animatable* object);

    /// Number of nodes so far; a later RollBack to it takes back all nodes added since, for a
    /// text that is thrown away.
    [[nodiscard]] size_t Mark() const { return order_.size(); }
    void RollBack(size_t mark);

  private:
    std::pmr::unsynchronized_pool_resource memory_; // many small pieces of one size
    std::pmr::unordered_map<const Animatable*, int> ids_;
    std::vector<const Animatable*> order_;
};

} // namespace brimwave
