#pragma once

#include "resourceinfo/model/Types.h"

#include <span>

#include <zlib.h>

/// RapidJSON's FileReadStream for a gzip file.
class GzStream {
  public:
    using Ch = char;

    GzStream( String const& path, std::span<char> buffer )
        : file_( gzopen( path.c_str(), "rb" ) ), buffer_( buffer ) {
        gzbuffer( file_, 65536 );
        refill();
    }
    ~GzStream() { gzclose( file_ ); }
    GzStream( GzStream const& ) = delete;
    GzStream& operator=( GzStream const& ) = delete;

    Ch Peek() const { return *current_; }
    Ch Take() {
        Ch const c = *current_;
        if( current_ != last_ )
            ++current_;
        else
            refill();
        return c;
    }
    std::size_t Tell() const { return before_ + static_cast<std::size_t>( current_ - buffer_.data() ); }

    // The writing half of the concept; never called.
    void Put( Ch ) {}
    void Flush() {}
    Ch* PutBegin() { return nullptr; }
    std::size_t PutEnd( Ch* ) { return 0; }

  private:
    /// A file's end is a NUL that stays.
    void refill() {
        before_ += static_cast<std::size_t>( current_ - buffer_.data() );
        current_ = buffer_.data();
        auto const size = gzread( file_, buffer_.data(), static_cast<unsigned>( buffer_.size() ) );
        last_ = current_ + ( size > 0 ? size - 1 : 0 );
        if( size <= 0 )
            *current_ = '\0';
    }

    gzFile file_;
    std::span<char> buffer_;
    char* current_ = buffer_.data();
    char* last_ = current_;
    std::size_t before_ = 0;
};
