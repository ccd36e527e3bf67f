#include "resourceinfo/parser/context/IsalFile.h"

#include "vessa/OpenFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>
#include <unistd.h>
#include <utility>

namespace Context {

namespace {

constexpr std::size_t pieceSize = 65536;
constexpr std::size_t lookAhead = 8; // the inflater's

char const* const cutOff = "unexpected end of file";

/// In zlib's words.
char const* reasonOf( int result ) {
    switch( result ) {
    case ISAL_INVALID_BLOCK:
        return "invalid block";
    case ISAL_INVALID_LOOKBACK:
        return "invalid distance too far back";
    case ISAL_INCORRECT_CHECKSUM:
        return "incorrect data check";
    default:
        return "invalid code";
    }
}

/// The inflater leaves the upper halves of the vector registers in use, which slows down all SSE code after
/// it.
#ifdef __x86_64__
[[gnu::target( "avx" )]] void zeroUpperHalves() { __builtin_ia32_vzeroupper(); }
void releaseUpperHalves() {
    if( __builtin_cpu_supports( "avx" ) )
        zeroUpperHalves();
}
#else
void releaseUpperHalves() {}
#endif

/// Parts of a header that are there or not: bits of its flags.
enum HeaderPart { headerChecksum = 2, extraField = 4, fileName = 8, comment = 16, unknownParts = 0xe0 };

} // namespace

String FilePieces::open( String const& path ) {
    piece_ = std::make_unique_for_overwrite<unsigned char[]>( lookAhead + pieceSize );
    auto const file = Vessa::openRegularFile( path );
    descriptor_ = file.descriptor;
    size_ = file.size;
    return file.reason;
}

bool FilePieces::rewind() {
    next = nullptr;
    left = 0;
    error_.clear();
    return ::lseek( descriptor_, 0, SEEK_SET ) == 0;
}

void FilePieces::close() {
    if( int const descriptor = std::exchange( descriptor_, -1 ); descriptor >= 0 )
        ::close( descriptor );
    piece_.reset();
}

bool FilePieces::more() {
    unsigned char* const piece = piece_.get() + lookAhead;
    if( next )
        std::memmove( piece - lookAhead, next - lookAhead, lookAhead + left );
    next = piece;
    auto const count = ::read( descriptor_, piece + left, pieceSize - left );
    if( count < 0 )
        error_ = std::strerror( errno );
    left += count > 0 ? static_cast<std::size_t>( count ) : 0;
    return count > 0;
}

int FilePieces::take() {
    if( left == 0 && !more() )
        return -1;
    --left;
    return *next++;
}

IsalFile::IsalFile() = default;
IsalFile::~IsalFile() = default;

String IsalFile::open( String const& path ) { return file_.open( path ); }

bool IsalFile::rewind() {
    content_ = Content::unknown;
    error_.clear();
    return file_.rewind();
}

bool IsalFile::isCompressed() { return content_ != Content::unknown && content_ != Content::plain; }

String IsalFile::error() { return error_; }

void IsalFile::close() {
    file_.close();
    state_.reset();
}

int IsalFile::read( std::span<char> buffer ) {
    if( content_ == Content::unknown )
        look();
    if( !error_.empty() )
        return -1;
    return content_ == Content::plain ? readPlain( buffer ) : readMembers( buffer );
}

/// Finds out what comes next. Anything may follow the last member; it is ignored.
void IsalFile::look() {
    while( file_.left < 2 && file_.more() )
        ;
    bool const isMember = file_.left >= 2 && file_.next[ 0 ] == 0x1f && file_.next[ 1 ] == 0x8b;
    content_ = isMember                       ? Content::betweenMembers
               : content_ == Content::unknown ? Content::plain
                                              : Content::ended;
    error_ = file_.error();
}

int IsalFile::readPlain( std::span<char> buffer ) {
    if( file_.left == 0 && !file_.more() ) {
        error_ = file_.error();
        return error_.empty() ? 0 : -1;
    }
    std::size_t const size = std::min( file_.left, buffer.size() );
    std::memcpy( buffer.data(), file_.next, size );
    file_.next += size;
    file_.left -= size;
    return static_cast<int>( size );
}

int IsalFile::readMembers( std::span<char> buffer ) {
    if( !state_ )
        state_ = std::make_unique<inflate_state>(); // zeros, which the inflater counts on
    state_->next_out = reinterpret_cast<unsigned char*>( buffer.data() );
    state_->avail_out = static_cast<std::uint32_t>( buffer.size() );
    while( state_->avail_out > 0 && error_.empty() && content_ != Content::ended ) {
        if( content_ == Content::member )
            inflate();
        else
            startMember();
    }
    auto const count = static_cast<int>( buffer.size() - state_->avail_out );
    return count > 0 || error_.empty() ? count : -1;
}

void IsalFile::startMember() {
    look();
    if( content_ == Content::ended || !error_.empty() )
        return;
    if( char const* const objection = takeHeader() ) {
        error_ = file_.error().empty() ? objection : file_.error();
        return;
    }
    isal_inflate_reset( state_.get() );
    state_->crc_flag = ISAL_GZIP_NO_HDR_VER;
    content_ = Content::member;
}

/// Gives the inflater what there is of the file, nothing at its end: it still has characters then.
void IsalFile::inflate() {
    bool const isEnd = file_.left == 0 && !file_.more();
    auto const room = state_->avail_out;
    state_->next_in = file_.next;
    state_->avail_in = static_cast<std::uint32_t>( file_.left );
    int const result = isal_inflate( state_.get() );
    releaseUpperHalves();
    file_.next = state_->next_in;
    file_.left = state_->avail_in;
    if( result < 0 )
        error_ = reasonOf( result );
    else if( state_->block_state == ISAL_BLOCK_FINISH )
        content_ = Content::betweenMembers;
    else if( isEnd && state_->avail_out == room )
        error_ = file_.error().empty() ? cutOff : file_.error();
}

/// Takes a member's header (RFC 1952). What is wrong with it; null when nothing is.
char const* IsalFile::takeHeader() {
    auto const skip = [ this ]( int bytes ) {
        while( bytes > 0 && takeHeaderByte() >= 0 )
            --bytes;
        return bytes == 0;
    };
    auto const skipText = [ this ] {
        int byte = 0;
        while( ( byte = takeHeaderByte() ) > 0 )
            ;
        return byte == 0;
    };
    auto const number = [ this ] {
        int const low = takeHeaderByte();
        int const high = takeHeaderByte();
        return high < 0 ? -1 : low + 256 * high;
    };

    headerCheck_ = 0;
    skip( 2 ); // are known
    int const method = takeHeaderByte();
    int const parts = takeHeaderByte();
    if( parts < 0 )
        return cutOff;
    if( method != 8 )
        return "unknown compression method";
    if( parts & unknownParts )
        return "unknown header flags set";
    if( !skip( 6 ) ) // time, compressor, system
        return cutOff;
    if( parts & extraField ) {
        int const length = number();
        if( length < 0 || !skip( length ) )
            return cutOff;
    }
    if( ( parts & fileName && !skipText() ) || ( parts & comment && !skipText() ) )
        return cutOff;
    if( parts & headerChecksum ) {
        int const expected = static_cast<int>( headerCheck_ & 0xffff );
        int const found = number();
        if( found != expected )
            return found < 0 ? cutOff : "header crc mismatch";
    }
    return nullptr;
}

int IsalFile::takeHeaderByte() {
    int const byte = file_.take();
    if( byte >= 0 )
        headerCheck_ = crc32_gzip_refl( headerCheck_, file_.next - 1, 1 );
    return byte;
}

} // namespace Context
