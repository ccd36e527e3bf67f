#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace Vessa {

/// First-in, first-out queue of a small value type. An empty queue that was never filled owns no memory.
/// Copies are deep; a moved-from queue is empty. Thread-compatible: concurrent reads are fine, a write needs
/// exclusion.
template<class T>
class Queue {
  public:
    using const_iterator = typename std::vector<T>::const_iterator;

    Queue() = default;
    Queue( Queue const& ) = default;
    Queue( Queue&& other ) noexcept
        : items_( std::move( other.items_ ) ), head_( std::exchange( other.head_, 0 ) ) {}
    Queue& operator=( Queue other ) noexcept {
        std::swap( items_, other.items_ );
        std::swap( head_, other.head_ );
        return *this;
    }

    bool empty() const { return head_ == items_.size(); }
    std::size_t size() const { return items_.size() - head_; }

    /// Appends at the back; amortised constant time.
    void enq( T value ) { items_.push_back( value ); }

    /// Removes and returns the front element; an empty queue answers T() and stays as it is. Amortised
    /// constant time.
    T deq() {
        if( empty() )
            return T();
        T const value = items_[ head_++ ];
        dropConsumed();
        return value;
    }

    /// The element at that end, or T() when the queue is empty.
    T front() const { return empty() ? T() : items_[ head_ ]; }
    T back() const { return empty() ? T() : items_.back(); }

    void clear() {
        items_.clear();
        head_ = 0;
    }

    /// From front to back; invalidated by enq, deq and clear.
    const_iterator begin() const { return items_.begin() + static_cast<std::ptrdiff_t>( head_ ); }
    const_iterator end() const { return items_.end(); }

    friend bool operator==( Queue const& a, Queue const& b ) {
        return a.size() == b.size() && std::equal( a.begin(), a.end(), b.begin() );
    }

  private:
    /// Gives the consumed front back once it is half of the storage, so that removal stays amortised
    /// constant.
    void dropConsumed() {
        if( head_ * 2 < items_.size() )
            return;
        items_.erase( items_.begin(), begin() );
        head_ = 0;
    }

    std::vector<T> items_;
    std::size_t head_ = 0;
};

} // namespace Vessa
