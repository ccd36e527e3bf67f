#pragma once

#include <cstdint>
#include <span>

/// Numbers out of an input, from its front; zeros after its end.
class Choices {
  public:
    explicit Choices( std::span<std::uint8_t const> bytes ) : bytes_( bytes ) {}

    bool empty() const { return bytes_.empty(); }
    /// Takes a byte.
    std::uint32_t byte() {
        if( empty() )
            return 0;
        std::uint32_t const value = bytes_.front();
        bytes_ = bytes_.subspan( 1 );
        return value;
    }
    std::uint32_t below( std::uint32_t bound ) { return byte() % bound; }
    /// Takes four bytes.
    std::uint32_t number() {
        std::uint32_t value = 0;
        for( int i = 0; i < 4; ++i )
            value = value << 8 | byte();
        return value;
    }
    /// The rest that was not taken.
    std::span<std::uint8_t const> rest() const { return bytes_; }

  private:
    std::span<std::uint8_t const> bytes_;
};
