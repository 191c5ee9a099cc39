#pragma once
// An ordered, 1-based collection of shared objects with optional string keys.
// Positional access is constant time: the solver and the drawing loops index it
// inside long loops.
#include "common/Fault.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace velk {

template <class T> class Collection {
public:
  using Ptr = std::shared_ptr<T>;

  long Count() const { return static_cast<long>(items_.size()); }

  const Ptr& Item(long index) const {
    if (index < 1 || index > Count()) Raise(errSubscript, "subscript out of range");
    return items_[static_cast<std::size_t>(index - 1)];
  }
  const Ptr& Item(const std::string& key) const {
    auto it = keys_.find(key);
    if (it == keys_.end()) Raise(errInvalidCall, "unknown key '" + key + "'");
    return it->second;
  }

  void Add(Ptr item, const std::string& key) {
    if (!key.empty()) {
      if (keys_.count(key)) Raise(errDuplicateKey, "duplicate key '" + key + "'");
      keys_.emplace(key, item);
    }
    items_.push_back(std::move(item));
  }

  void Remove(long index) {
    const Ptr& doomed = Item(index);
    for (auto it = keys_.begin(); it != keys_.end(); ++it)
      if (it->second == doomed) {
        keys_.erase(it);
        break;
      }
    items_.erase(items_.begin() + (index - 1));
  }
  void Remove(const std::string& key) {
    const Ptr& doomed = Item(key);
    for (long i = 1; i <= Count(); ++i)
      if (items_[static_cast<std::size_t>(i - 1)] == doomed) return Remove(i);
  }

  // NewEnum: iteration in position order.
  auto begin() const { return items_.begin(); }
  auto end() const { return items_.end(); }

  void Reserve(std::size_t n) { items_.reserve(n); }

private:
  std::vector<Ptr> items_;
  std::unordered_map<std::string, Ptr> keys_;
};

} // namespace velk
