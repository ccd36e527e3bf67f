#pragma once

#include "resourceinfo/parser/context/ByteScan.h"
#include "resourceinfo/parser/context/InputFile.h"
#include "resourceinfo/parser/context/LineCounter.h"

#include <string_view>

namespace Context {

/// The characters of a file, plain or gzip, as RapidJSON's reader takes them. The end of the file is one NUL.
/// A read error ends the characters like the end of the file does, and stays visible in failed(): what was
/// read until then must not be used.
class GZFileReadStream {
  public:
    using Ch = char;

    /// So many characters at the end of the buffer are not for the file: the first is a NUL, which ends every
    /// search in the buffer, and a search in large steps may look at the others.
    static constexpr std::size_t padding = 64;

    /// Reads from an open file into a buffer of the caller, which must have values, if only zeros; both must
    /// outlive the stream.
    GZFileReadStream( InputFile& file, std::span<char> buffer );

    Ch Peek() const { return *current_; }
    Ch Take() {
        Ch const c = *current_;
        Read();
        return c;
    }
    /// Takes the characters up to the first that `isFound` says true of (ByteScan.h), as it must of a NUL,
    /// and hands them to `run` piece by piece.
    template<class IsFound, class Run>
    void takeTo( IsFound isFound, Run run ) {
        for( ;; ) {
            char const* const found = ByteScan::findSure( current_, isFound );
            run( std::string_view( current_, found ) );
            current_ = found;
            if( found <= bufferLast_ )
                return;
            refill();
        }
    }
    /// For those who search the buffer themselves: the place of the next character. All characters up to the
    /// buffer's end follow it, and the NUL.
    char const* current() const { return current_; }
    /// Takes the characters in front of a place in the buffer. The place of the next character, which is
    /// another one where the buffer ended.
    char const* takeUpTo( char const* place ) {
        current_ = place;
        if( place > bufferLast_ )
            refill();
        return current_;
    }
    /// Number of characters in front of those in the buffer: tells one buffer's content from the next.
    std::size_t charactersBefore() const { return count_; }
    /// Notes that the next character is the first of a token.
    void tokenStarts() { tokenStart_ = Tell(); }
    std::size_t tokenStart() const { return tokenStart_; }
    /// Number of characters taken.
    std::size_t Tell() const { return count_ + static_cast<std::size_t>( current_ - buffer_.data() ); }

    /// Characters of the buffer that are taken.
    std::string_view taken() const { return { buffer_.data(), current_ }; }
    /// Has the lines of all buffers counted, for a survey; null for none.
    void linesAre( LineCounter* lines ) { lines_ = lines; }

    /// True once the file could not deliver what it should hold: an I/O error, damaged or cut-off
    /// gzip.
    bool failed() const { return failed_; }
    /// Reads the rest of the file, for its errors alone.
    void drain();

    // The writing half of the reader's stream concept; never called, since the stream is not parsed in place.
    void Put( Ch ) {}
    void Flush() {}
    Ch* PutBegin() { return nullptr; }
    std::size_t PutEnd( Ch* ) { return 0; }

  private:
    void Read() {
        if( current_ < bufferLast_ )
            ++current_;
        else if( !eof_ )
            refill();
    }
    void refill();

    InputFile& file_;
    std::span<char> buffer_;
    char const* bufferLast_; // last valid character
    char const* current_;    // next character to hand out
    U32 readCount_ = 0;      // characters of the last read
    std::size_t count_ = 0;  // characters before the buffer
    std::size_t tokenStart_ = 0;
    LineCounter* lines_ = nullptr;
    bool eof_ = false;
    bool failed_ = false;
};

} // namespace Context
