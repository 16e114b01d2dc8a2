#pragma once

#include <cstddef>
#include <functional>
#include <initializer_list>
#include <memory>
#include <unordered_set>
#include <utility>
#include <vector>

namespace qv {

/// How an `OrderedSet` tells its elements apart: values by `==` and `std::hash`.
template <typename T>
struct SetTraits {
    /// The value's hash.
    static std::size_t hash(const T& element) { return std::hash<T>{}(element); }
    /// Whether two values are the same.
    static bool equal(const T& a, const T& b) { return a == b; }
};

/// Shared objects are told apart by their own `hash()` and `isEqual()`, not by address.
template <typename T>
struct SetTraits<std::shared_ptr<T>> {
    /// The object's own hash; 0 for null.
    static std::size_t hash(const std::shared_ptr<T>& element) {
        if constexpr (requires { element->hash(); }) {
            return element ? element->hash() : 0;
        } else {
            return std::hash<std::shared_ptr<T>>{}(element);
        }
    }
    /// Whether two objects say that they are the same.
    static bool equal(const std::shared_ptr<T>& a, const std::shared_ptr<T>& b) {
        if constexpr (requires { a->isEqual(b); }) {
            return a == b || (a && b && a->isEqual(b));
        } else {
            return a == b;
        }
    }
};

/// A set that keeps the order in which its elements first arrived, so that whatever is written from it comes out the
/// same way each time. Not synchronised. Elements must not change their identity while they are in the set.
template <typename T, typename Traits = SetTraits<T>>
class OrderedSet {
  public:
    /// What it holds.
    using value_type = T;
    /// Walks through it in its order.
    using const_iterator = typename std::vector<T>::const_iterator;

    OrderedSet() = default;
    /// The elements in that order, the first of equal ones.
    OrderedSet(std::initializer_list<T> elements) {
        for (const T& element : elements)
            insert(element);
    }

    /// Adds an element unless an equal one is there already; says whether it was added.
    bool insert(T element) {
        if (!mIndex.insert(element).second) return false;
        mElements.push_back(std::move(element));
        return true;
    }

    /// Adds the elements of another set, in its order, that this one lacks.
    void unite(const OrderedSet& other) {
        for (const T& element : other)
            insert(element);
    }

    /// Whether an equal element is there.
    bool contains(const T& element) const { return mIndex.contains(element); }
    /// How many elements there are.
    std::size_t size() const { return mElements.size(); }
    /// Whether there is none.
    bool empty() const { return mElements.empty(); }
    /// The first element in its order.
    const_iterator begin() const { return mElements.begin(); }
    /// Behind the last element.
    const_iterator end() const { return mElements.end(); }

    /// Equal when both hold equal elements, in whatever order.
    friend bool operator==(const OrderedSet& a, const OrderedSet& b) {
        if (a.size() != b.size()) return false;
        for (const T& element : a) {
            if (!b.contains(element)) return false;
        }
        return true;
    }

  private:
    struct Hash {
        std::size_t operator()(const T& element) const { return Traits::hash(element); }
    };
    struct Equal {
        bool operator()(const T& a, const T& b) const { return Traits::equal(a, b); }
    };

    std::vector<T> mElements;
    std::unordered_set<T, Hash, Equal> mIndex;
};

}  // namespace qv
