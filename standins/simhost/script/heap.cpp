#include "simhost/script/heap.h"

#include "simhost/script/error.h"
#include "simhost/script/object.h"

namespace simhost::script {
namespace {

std::vector<Traceable*>& AllTraceables() {
    static auto& all = *new std::vector<Traceable*>; // outlives every static value
    return all;
}

} // namespace

void MemoryMeter::Add(size_t bytes) {
    if (bytes > limit_ || live_ > limit_ - bytes)
        throw ScriptError(ScriptError::Kind::Limit, L"Out of script memory");
    live_ += bytes;
}

Traceable::Traceable() {
    index_ = AllTraceables().size();
    AllTraceables().push_back(this);
}

Traceable::~Traceable() {
    auto& all = AllTraceables();
    all.back()->index_ = index_;
    all[index_] = all.back();
    all.pop_back();
}

void Marker::Visit(const Value& value) {
    if (value.AsObject())
        Visit(value.AsObject()->AsTraceable());
}

void Marker::Visit(const Traceable* traceable) {
    if (traceable && !traceable->marked_) {
        traceable->marked_ = true;
        open_.push_back(traceable);
    }
}

void Marker::Run() {
    while (!open_.empty()) {
        const Traceable* next = open_.back();
        open_.pop_back();
        next->Trace(*this);
    }
}

void ClearUnreachable(const std::vector<Value>& roots) {
    Marker marker;
    for (const Value& root : roots)
        marker.Visit(root);
    marker.Run();
    std::vector<Value> garbage;
    for (Traceable* traceable : AllTraceables()) {
        if (!traceable->marked_)
            traceable->DropReferences(garbage);
        traceable->marked_ = false;
    }
    ReleaseValues(std::move(garbage));
}

void ReleaseValues(std::vector<Value>&& values) noexcept {
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
