#include "simhost/script/heap.h"

#include "simhost/script/error.h"

namespace simhost::script {
namespace {

std::vector<Container*>& AllContainers() {
    static auto& all = *new std::vector<Container*>; // outlives every static value
    return all;
}

} // namespace

void MemoryMeter::Add(size_t bytes) {
    if (bytes > limit_ || live_ > limit_ - bytes)
        throw ScriptError(ScriptError::Kind::Limit, L"Out of script memory");
    live_ += bytes;
}

Container::Container() : index_(AllContainers().size()) {
    AllContainers().push_back(this);
}

Container::~Container() {
    auto& all = AllContainers();
    all.back()->index_ = index_;
    all[index_] = all.back();
    all.pop_back();
}

void Container::EmptyAllOf(const Interpreter* owner) {
    std::vector<Value> taken;
    for (Container* container : AllContainers()) {
        if (container->owner_ != owner)
            continue;
        for (Value& value : container->TakeValues())
            taken.push_back(std::move(value));
    }
    Release(std::move(taken));
}

void Container::Release(std::vector<Value>&& values) noexcept {
    static auto& pending = *new std::vector<Value>; // outlives every static value
    static bool draining = false;
    for (Value& value : values) {
        if (value.AsObject())
            pending.push_back(std::move(value));
    }
    values.clear();
    if (draining)
        return;
    draining = true;
    while (!pending.empty()) {
        const Value last = std::move(pending.back());
        pending.pop_back();
    }
    pending = {};
    draining = false;
}

} // namespace simhost::script
