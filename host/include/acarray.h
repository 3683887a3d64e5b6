// The growing array of the host API: elements in a row, addressed by int. An index outside 0 .. length() - 1
// is a programming error. Not meant for bool.
#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <vector>

template <class T> class AcArray {
public:
    /// Reserves room for `initPhysicalLength` elements; how it grows later is not observable.
    explicit AcArray(int initPhysicalLength = 0, int initGrowLength = 8) {
        static_cast<void>(initGrowLength);
        items_.reserve(size(initPhysicalLength));
    }

    int length() const { return static_cast<int>(items_.size()); }
    bool isEmpty() const { return items_.empty(); }

    const T& at(int index) const { return items_[checked(index)]; }
    T& at(int index) { return items_[checked(index)]; }
    const T& operator[](int index) const { return at(index); }
    T& operator[](int index) { return at(index); }
    const T& first() const { return at(0); }
    T& first() { return at(0); }
    const T& last() const { return at(length() - 1); }
    T& last() { return at(length() - 1); }

    /// Adds at the end and returns the new element's index.
    int append(const T& value) {
        items_.push_back(value);
        return length() - 1;
    }
    /// Adds all elements of another array, or of this one again.
    AcArray& append(const AcArray& other) {
        const std::vector<T> added = other.items_;
        items_.insert(items_.end(), added.begin(), added.end());
        return *this;
    }
    /// Inserts before `index`, which may be length().
    AcArray& insertAt(int index, const T& value) {
        assert(index >= 0 && index <= length());
        items_.insert(items_.begin() + index, value);
        return *this;
    }
    AcArray& removeAt(int index) {
        items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(checked(index)));
        return *this;
    }
    AcArray& removeAll() { return setLogicalLength(0); }
    /// Cuts the array or fills it up with default values.
    AcArray& setLogicalLength(int length) {
        items_.resize(size(length));
        return *this;
    }

    /// Index of the first equal element from `start` on, or -1.
    int find(const T& value, int start = 0) const {
        const auto from = items_.begin() + std::clamp(start, 0, length());
        const auto found = std::find(from, items_.end(), value);
        return found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
    }
    bool contains(const T& value, int start = 0) const { return find(value, start) >= 0; }

    const T* begin() const { return items_.data(); }
    const T* end() const { return items_.data() + items_.size(); }
    T* begin() { return items_.data(); }
    T* end() { return items_.data() + items_.size(); }

private:
    static std::size_t size(int length) { return static_cast<std::size_t>(std::max(length, 0)); }
    std::size_t checked(int index) const {
        assert(index >= 0 && index < length());
        return static_cast<std::size_t>(index);
    }

    std::vector<T> items_;
};
