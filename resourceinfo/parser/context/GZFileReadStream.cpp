#include "resourceinfo/parser/context/GZFileReadStream.h"

GZFileReadStream::GZFileReadStream( gzFile file, std::span<char> buffer )
    : file_( file ), buffer_( buffer ), bufferLast_( buffer.data() ), current_( buffer.data() ) {
    refill();
}

void GZFileReadStream::refill() {
    count_ += readCount_;
    int const result = gzread( file_, buffer_.data(), static_cast<unsigned>( buffer_.size() ) );
    readCount_ = result > 0 ? static_cast<U32>( result ) : 0;
    current_ = buffer_.data();
    if( readCount_ == buffer_.size() ) {
        bufferLast_ = current_ + readCount_ - 1;
        return;
    }
    buffer_[ readCount_ ] = '\0';
    bufferLast_ = current_ + readCount_;
    eof_ = true;
    // A cut-off gzip file still delivers its characters; only the error tells it from a whole one.
    int error = Z_OK;
    gzerror( file_, &error );
    failed_ = result < 0 || error != Z_OK;
}

void GZFileReadStream::drain() {
    while( !eof_ )
        refill();
}
