#include "resourceinfo/parser/context/GZFileReadStream.h"

namespace Context {

GZFileReadStream::GZFileReadStream( InputFile& file, std::span<char> buffer )
    : file_( file ),
      buffer_( buffer.first( buffer.size() - padding ) ),
      bufferLast_( buffer.data() ),
      current_( buffer.data() ) {
    refill();
}

void GZFileReadStream::refill() {
    if( lines_ )
        lines_->bufferEnds( { buffer_.data(), readCount_ } );
    count_ += readCount_;
    readCount_ = 0;
    int result = 1;
    while( result > 0 && readCount_ < buffer_.size() ) {
        result = file_.read( buffer_.subspan( readCount_ ) );
        readCount_ += result > 0 ? static_cast<U32>( result ) : 0;
    }
    current_ = buffer_.data();
    buffer_.data()[ readCount_ ] = '\0';
    if( readCount_ == buffer_.size() ) {
        bufferLast_ = current_ + readCount_ - 1;
        return;
    }
    bufferLast_ = current_ + readCount_;
    eof_ = true;
    // A cut-off gzip file still delivers its characters; only the error tells it from a whole one.
    failed_ = result < 0 || !file_.error().empty();
}

void GZFileReadStream::drain() {
    while( !eof_ )
        refill();
}

} // namespace Context
