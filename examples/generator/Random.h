#pragma once

#include <cstdint>
#include <deque>
#include <initializer_list>
#include <random>
#include <span>
#include <utility>

namespace bfgen {

/// Numbers that depend on the seed alone. The reduction to a range is our own: the distributions of the
/// standard library differ between its implementations, and equal options have to give equal files
/// everywhere.
class Random {
  public:
    /// The streams of one seed are independent of each other.
    Random( uint64_t seed, uint64_t stream )
        : engine_( seed * 0x9e3779b97f4a7c15U + ( stream + 1 ) * 0xd1b54a32d192ed03U ) {}

    uint32_t below( uint32_t bound ) { return static_cast<uint32_t>( engine_() % bound ); }
    uint32_t between( uint32_t first, uint32_t last ) { return first + below( last - first + 1 ); }
    bool chance( uint32_t percent ) { return below( 100 ) < percent; }
    double fraction() { return below( 10000 ) / 10000.0; }

    template<typename Item>
    Item const& pick( std::span<Item const> items ) {
        return items[ below( static_cast<uint32_t>( items.size() ) ) ];
    }

    template<typename Items>
    void shuffle( Items& items ) {
        for( std::size_t left = items.size(); left > 1; --left ) {
            std::swap( items[ left - 1 ], items[ below( static_cast<uint32_t>( left ) ) ] );
        }
    }

  private:
    std::mt19937_64 engine_;
};

/// Deals its cards in random order and starts anew when all are dealt, so that every card comes up early.
template<typename Card>
class Deck {
  public:
    struct Pile {
        Card card;
        uint32_t count;
    };

    Deck( std::initializer_list<Pile> piles ) {
        for( Pile const& pile : piles ) {
            cards_.insert( cards_.end(), pile.count, pile.card );
        }
    }

    Card deal( Random& random ) {
        if( next_ == 0 ) {
            random.shuffle( cards_ );
        }
        Card card = cards_[ next_ ];
        next_ = ( next_ + 1 ) % cards_.size();
        return card;
    }

  private:
    std::deque<Card> cards_; // not a vector, which has no references to bool
    std::size_t next_ = 0;
};

} // namespace bfgen
