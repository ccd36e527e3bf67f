// The two inflaters side by side: they accept the same files, and give the same characters. This program
// reads context files with the one that the library is not configured with.

#include "resourceinfo/parser/context/IsalFile.h"
#include "resourceinfo/parser/context/ZlibFile.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <sys/mman.h>
#include <typeinfo>
#include <unistd.h>
#include <utility>
#include <vector>
#include <zlib.h>

using namespace Context;

namespace {

using namespace std::string_literals;

/// A file in memory, written anew for each content.
class MemoryFile {
  public:
    MemoryFile() : descriptor_( memfd_create( "bfri-test", MFD_CLOEXEC ) ) {}
    MemoryFile( MemoryFile const& ) = delete;
    MemoryFile& operator=( MemoryFile const& ) = delete;
    ~MemoryFile() { close( descriptor_ ); }

    void append( std::string const& bytes ) {
        ASSERT_EQ( write( descriptor_, bytes.data(), bytes.size() ), static_cast<ssize_t>( bytes.size() ) );
    }
    void contentIs( std::string const& bytes ) {
        ASSERT_EQ( ftruncate( descriptor_, 0 ), 0 );
        ASSERT_EQ( lseek( descriptor_, 0, SEEK_SET ), 0 );
        append( bytes );
    }
    std::string path() const { return "/proc/self/fd/" + std::to_string( descriptor_ ); }

  private:
    int const descriptor_;
};

/// The result of reading a file.
struct Outcome {
    std::string text;
    bool compressed = false;
    std::string error; // the text counts for nothing where there is one

    bool failed() const { return !error.empty(); }
};

/// Reads a file through in pieces of that many characters.
template<class File>
Outcome outcomeOf( std::string const& path, std::size_t pieceSize ) {
    File file;
    EXPECT_EQ( file.open( path ), "" );
    Outcome outcome;
    std::vector<char> piece( pieceSize );
    int count = 0;
    while( ( count = file.read( piece ) ) > 0 )
        outcome.text.append( piece.data(), static_cast<std::size_t>( count ) );
    outcome.compressed = file.isCompressed();
    outcome.error = file.error();
    EXPECT_TRUE( count == 0 || outcome.failed() );
    return outcome;
}

/// zlib refuses Huffman codes that leave patterns without a meaning, ISA-L does not.
bool refusesACode( Outcome const& zlib ) {
    return zlib.error == "invalid literal/lengths set" || zlib.error == "invalid distances set";
}

class Inflaters : public testing::Test {
  protected:
    ~Inflaters() override { EXPECT_TRUE( knownDifferences_.empty() ); }

    /// Both accept the content, with the same characters, or both refuse it. Answers what ISA-L makes of it.
    Outcome expectSame( std::string const& bytes, std::size_t pieceSize ) {
        file_.contentIs( bytes );
        Outcome const isal = outcomeOf<IsalFile>( file_.path(), pieceSize );
        Outcome const zlib = outcomeOf<ZlibFile>( file_.path(), pieceSize );
        EXPECT_EQ( isal.compressed, zlib.compressed );
        if( !isal.failed() && refusesACode( zlib ) ) {
            knownDifferences_.push_back( isal.text );
            return isal;
        }
        EXPECT_EQ( isal.failed(), zlib.failed() ) << isal.error << " / " << zlib.error;
        if( !zlib.failed() && isal.text != zlib.text )
            ADD_FAILURE() << "other characters, pieces of " << pieceSize;
        return isal;
    }
    Outcome expectSame( std::string const& bytes ) {
        for( std::size_t const pieceSize : { 1U, 7U, 64U, 65536U } )
            expectSame( bytes, pieceSize );
        return expectSame( bytes, 4096 );
    }

    /// Damage may have made some codes that only zlib refuses, if the file does not use them: the text is
    /// whole.
    void expectKnownDifferences( std::string const& text, std::size_t most ) {
        for( std::string const& other : std::exchange( knownDifferences_, {} ) ) {
            EXPECT_EQ( other, text );
            EXPECT_GT( most--, 0 );
        }
    }

    MemoryFile file_;
    std::vector<std::string>
        knownDifferences_; // the texts of files that zlib refuses for a code that they need not
};

/// How a member is compressed.
struct Packing {
    int level = 6;
    int strategy = Z_DEFAULT_STRATEGY;
    int window = 15;
    gz_header* header = nullptr;
};

std::string packed( std::string const& text, Packing const& packing = {} ) {
    z_stream stream{};
    EXPECT_EQ( deflateInit2( &stream, packing.level, Z_DEFLATED, packing.window + 16, 8, packing.strategy ),
               Z_OK );
    if( packing.header )
        deflateSetHeader( &stream, packing.header );
    std::string bytes( deflateBound( &stream, text.size() ) + 200000, '\0' );
    stream.next_in = reinterpret_cast<Bytef*>( const_cast<char*>( text.data() ) );
    stream.avail_in = static_cast<uInt>( text.size() );
    stream.next_out = reinterpret_cast<Bytef*>( bytes.data() );
    stream.avail_out = static_cast<uInt>( bytes.size() );
    EXPECT_EQ( deflate( &stream, Z_FINISH ), Z_STREAM_END );
    bytes.resize( stream.total_out );
    deflateEnd( &stream );
    return bytes;
}

/// Numbers and words that come again, as in a context file.
std::string someText( std::size_t size, unsigned seed = 1 ) {
    std::mt19937 random( seed );
    std::string text;
    while( text.size() < size )
        text += "\n    \"name_" + std::to_string( random() % 50 ) + "\": " + std::to_string( random() ) + ",";
    text.resize( size );
    return text;
}

std::string randomBytes( std::size_t size ) {
    std::mt19937 random( 5 );
    std::string bytes( size, '\0' );
    for( char& byte : bytes )
        byte = static_cast<char>( random() );
    return bytes;
}

/// A member whose header has all that one may have.
std::string withFullHeader( std::string const& text, std::size_t extraSize, std::size_t nameSize ) {
    std::string extra( extraSize, 'e' );
    std::string name( nameSize, 'n' );
    std::string comment = "a comment";
    gz_header header{};
    header.text = 1;
    header.time = 12345;
    header.os = 3;
    header.extra = reinterpret_cast<Bytef*>( extra.data() );
    header.extra_len = static_cast<uInt>( extra.size() );
    header.name = reinterpret_cast<Bytef*>( name.data() );
    header.comment = reinterpret_cast<Bytef*>( comment.data() );
    header.hcrc = 1;
    return packed( text, { .header = &header } );
}

/// Files of every kind, small enough to damage every bit.
std::vector<std::string> smallFiles() {
    std::string const text = someText( 150 );
    return {
        packed( text ),
        packed( text, { .level = 0 } ),
        packed( text, { .level = 1 } ),
        packed( text, { .strategy = Z_FIXED } ),
        packed( someText( 400 ), { .level = 9 } ),
        packed( std::string( 3000, 'a' ), { .window = 9 } ),
        withFullHeader( text, 5, 7 ),
        packed( "" ),
        packed( text.substr( 0, 70 ) ) + packed( "" ) + packed( text.substr( 70 ) ),
        packed( text ) + "rubbish",
    };
}

/// One to three bytes left out, put in, moved or replaced.
std::string mutated( std::string bytes, std::mt19937& random ) {
    for( auto changes = 1 + random() % 3; changes > 0; --changes ) {
        std::size_t const place = random() % bytes.size();
        switch( random() % 4 ) {
        case 0:
            bytes.erase( place, 1 );
            break;
        case 1:
            bytes.insert( place, 1, static_cast<char>( random() ) );
            break;
        case 2:
            bytes[ place ] = bytes[ random() % bytes.size() ];
            break;
        default:
            bytes[ place ] = static_cast<char>( random() );
        }
    }
    return bytes;
}

TEST( InflaterOfThisProgram, IsNotTheConfiguredOne ) {
    auto const file = gzipFile();
    EXPECT_EQ( dynamic_cast<IsalFile*>( file.get() ) != nullptr, BFRESOURCEINFO_INFLATE != "isal"s );
    EXPECT_EQ( dynamic_cast<ZlibFile*>( file.get() ) != nullptr, BFRESOURCEINFO_INFLATE != "zlib"s );
}

TEST_F( Inflaters, AgreeOnPlainFiles ) {
    for( std::string const& bytes :
         { ""s, "\x1f"s, "\x1f\x8a"s, "{}"s, "\x8b\x1f"s, someText( 70000 ), std::string( 65536, '\0' ) } ) {
        Outcome const outcome = expectSame( bytes );
        EXPECT_EQ( outcome.text, bytes );
        EXPECT_FALSE( outcome.compressed );
    }
}

TEST_F( Inflaters, AgreeOnEveryWayToCompress ) {
    for( std::size_t const size : { 0U, 1U, 300U, 40000U, 300000U } ) {
        for( int level = 0; level <= 9; ++level )
            EXPECT_EQ( expectSame( packed( someText( size ), { .level = level } ) ).text, someText( size ) );
        for( int const strategy : { Z_FILTERED, Z_HUFFMAN_ONLY, Z_RLE, Z_FIXED } )
            EXPECT_EQ( expectSame( packed( someText( size ), { .strategy = strategy } ) ).text,
                       someText( size ) );
        for( int window = 9; window <= 15; ++window )
            EXPECT_EQ( expectSame( packed( someText( size ), { .window = window } ) ).text,
                       someText( size ) );
        EXPECT_EQ( expectSame( packed( randomBytes( size ) ) ).text, randomBytes( size ) );
    }
}

TEST_F( Inflaters, AgreeOnHeaders ) {
    for( std::size_t const extra : { 0U, 1U, 65535U } ) {
        for( std::size_t const name : { 0U, 100U, 100000U } )
            EXPECT_EQ( expectSame( withFullHeader( "text", extra, name ) ).text, "text" );
    }
    struct Row {
        std::size_t byte;
        char value;
        char const* error;
    };
    std::string const good = packed( "text" );
    for( auto const& [ byte, value, error ] :
         { Row{ 2, 7, "unknown compression method" }, Row{ 2, 0, "unknown compression method" },
           Row{ 3, '\x20', "unknown header flags set" }, Row{ 3, '\x80', "unknown header flags set" },
           Row{ 3, 1, "" }, Row{ 4, 99, "" }, Row{ 8, 99, "" }, Row{ 9, 99, "" } } ) {
        std::string bytes = good;
        bytes[ byte ] = value;
        EXPECT_EQ( expectSame( bytes ).error, error ) << byte;
    }
    std::string wrong = withFullHeader( "text", 3, 4 );
    wrong[ 4 ] ^= 1; // the time
    EXPECT_EQ( expectSame( wrong ).error, "header crc mismatch" );
}

TEST_F( Inflaters, AgreeOnWhatComesAfterAMember ) {
    std::string const member = packed( "text" );
    for( std::string const& rest :
         { ""s, "\0"s, "x"s, "\x1f"s, "\x1f\x8a"s, std::string( 70000, '\0' ), "\x1f\x1f\x8b"s + member } ) {
        Outcome const outcome = expectSame( member + rest );
        EXPECT_EQ( outcome.error, "" );
        EXPECT_EQ( outcome.text, "text" );
        EXPECT_TRUE( outcome.compressed );
    }
    EXPECT_EQ( expectSame( member + member + packed( "" ) + member ).text, "texttexttext" );
    EXPECT_EQ( expectSame( member + "\x1f\x8b" ).error, "unexpected end of file" );
    EXPECT_EQ( expectSame( member + "\x1f\x8bx" ).error, "unexpected end of file" );
    EXPECT_EQ( expectSame( member + "\x1f\x8bxy" ).error, "unknown compression method" );
}

TEST_F( Inflaters, AgreeOnMembersThatEndAtAnyPlaceOfAPiece ) {
    std::string const random = randomBytes( 65560 );
    for( std::size_t size = 65470; size < 65550; ++size ) {
        std::string const text = random.substr( 0, size );
        std::string const bytes =
            packed( text, { .level = 0 } ) + withFullHeader( "more", 3, 3 ) + packed( "most" );
        EXPECT_EQ( expectSame( bytes, 4096 ).text, text + "moremost" );
        EXPECT_EQ( expectSame( packed( text ) + bytes, 4096 ).text, text + text + "moremost" );
    }
}

TEST_F( Inflaters, AgreeOnTheChecksums ) {
    std::string const good = packed( someText( 5000 ) );
    for( std::size_t back = 1; back <= 8; ++back ) {
        std::string bytes = good;
        bytes[ bytes.size() - back ] ^= 1;
        EXPECT_TRUE( expectSame( bytes ).failed() ) << back;
    }
}

TEST_F( Inflaters, AgreeOnEveryPrefix ) {
    for( std::string const& bytes : smallFiles() ) {
        for( std::size_t size = 0; size < bytes.size() && !HasFailure(); ++size ) {
            SCOPED_TRACE( size );
            expectSame( bytes.substr( 0, size ) );
        }
    }
}

TEST_F( Inflaters, AgreeOnEveryFlippedBit ) {
    for( std::string const& good : smallFiles() ) {
        std::string const text = expectSame( good ).text;
        for( std::size_t bit = 0; bit < good.size() * 8 && !HasFailure(); ++bit ) {
            SCOPED_TRACE( bit );
            std::string bytes = good;
            bytes[ bit / 8 ] = static_cast<char>( bytes[ bit / 8 ] ^ 1 << bit % 8 );
            expectSame( bytes );
        }
        expectKnownDifferences( text, 10 );
    }
}

TEST_F( Inflaters, AgreeOnAHundredThousandMutations ) {
#ifdef BFRI_SANITIZED
    constexpr unsigned mutations = 10000;
#else
    constexpr unsigned mutations = 100000;
#endif
    std::mt19937 random( 17 );
    auto const files = smallFiles();
    std::size_t const pieceSizes[] = { 1, 7, 64, 4096, 65536 };
    for( std::string const& good : files ) {
        std::string const text = expectSame( good ).text;
        for( unsigned i = 0; i < mutations / files.size() && !HasFailure(); ++i ) {
            SCOPED_TRACE( i );
            expectSame( mutated( good, random ), pieceSizes[ random() % std::size( pieceSizes ) ] );
        }
        expectKnownDifferences( text, mutations / 1000 );
    }
}

TEST_F( Inflaters, ReadAgainFromTheStart ) {
    for( std::string const& bytes :
         { packed( someText( 200000 ) ), someText( 200000 ), packed( "cut" ).substr( 0, 20 ) } ) {
        file_.contentIs( bytes );
        IsalFile file;
        ASSERT_EQ( file.open( file_.path() ), "" );
        std::string buffer( 100000, '\0' );
        int const first = file.read( buffer );
        std::string const text = buffer.substr( 0, static_cast<std::size_t>( std::max( first, 0 ) ) );
        ASSERT_TRUE( file.rewind() );
        EXPECT_EQ( file.error(), "" );
        EXPECT_EQ( file.read( buffer ), first );
        EXPECT_EQ( buffer.substr( 0, text.size() ), text );
    }
}

/// The bits of a deflate stream, in their order.
class Bits {
  public:
    Bits& put( unsigned value, unsigned count ) {
        for( unsigned i = 0; i < count; ++i ) {
            if( used_++ % 8 == 0 )
                bytes_ += '\0';
            unsigned const byte = static_cast<unsigned char>( bytes_.back() );
            bytes_.back() = static_cast<char>( byte | ( value >> i & 1 ) << ( used_ - 1 ) % 8 );
        }
        return *this;
    }
    std::string const& bytes() const { return bytes_; }

  private:
    std::string bytes_;
    unsigned used_ = 0;
};

std::string littleEndian( std::uint32_t number ) {
    std::string bytes;
    for( int i = 0; i < 4; ++i )
        bytes += static_cast<char>( number >> 8 * i );
    return bytes;
}

/// A member of one block: its bits, with the checksum and size of a text.
std::string member( std::string const& deflated, std::string const& text ) {
    auto const check =
        crc32( 0, reinterpret_cast<Bytef const*>( text.data() ), static_cast<uInt>( text.size() ) );
    return "\x1f\x8b\x08\0\0\0\0\0\0\x03"s + deflated + littleEndian( static_cast<std::uint32_t>( check ) ) +
           littleEndian( static_cast<std::uint32_t>( text.size() ) );
}

/// The block's own code has two bits each for "A" and the end of the block, and none for the other two
/// patterns.
TEST_F( Inflaters, DifferOnCodesWithPatternsOfNoMeaning ) {
    Bits block;
    block.put( 1, 1 ).put( 2, 2 ); // the last block, with a code of its own:
    block.put( 0, 5 ).put( 0, 5 ).put(
        14, 4 ); // 257 lengths of literals, 1 of distances, 18 of what writes these:
    for( unsigned const length : { 0U, 0U, 1U, 0U, 0U, 0U, 0U, 0U, 0U, 0U, 0U, 0U, 0U, 0U, 0U, 2U, 0U,
                                   2U } ) // of 18: 1, 2: 2, 1: 2 bits
        block.put( length, 3 );
    auto const zeros = [ & ]( unsigned count ) { block.put( 0, 1 ).put( count - 11, 7 ); };
    auto const two = [ & ] { block.put( 3, 2 ); };
    auto const one = [ & ] { block.put( 1, 2 ); };
    zeros( 65 );
    two();
    zeros( 138 );
    zeros( 52 );
    two();
    one();
    block.put( 0, 2 ).put( 2, 2 ); // "A", the end
    file_.contentIs( member( block.bytes(), "A" ) );
    EXPECT_EQ( outcomeOf<ZlibFile>( file_.path(), 64 ).error, "invalid literal/lengths set" );
    Outcome const isal = outcomeOf<IsalFile>( file_.path(), 64 );
    EXPECT_EQ( isal.error, "" );
    EXPECT_EQ( isal.text, "A" );
}

/// Number of characters, or -1 after a failure.
template<class File>
std::int64_t sizeOf( std::string const& path ) {
    File file;
    EXPECT_EQ( file.open( path ), "" );
    std::vector<char> piece( 65536 );
    std::int64_t size = 0;
    int count = 0;
    while( ( count = file.read( piece ) ) > 0 )
        size += count;
    return file.error().empty() ? size : -1;
}

TEST_F( Inflaters, ReadMembersOfMoreThanFourGiB ) {
    // A run of spaces that ends at a byte, so that it may come again and again.
    constexpr std::size_t runSize = 16 << 20;
    constexpr int runs = 257;
    std::string const text( runSize, ' ' );
    std::string run( 1 << 20, '\0' );
    z_stream stream{};
    ASSERT_EQ( deflateInit2( &stream, 9, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY ), Z_OK );
    stream.next_in = reinterpret_cast<Bytef*>( const_cast<char*>( text.data() ) );
    stream.avail_in = runSize;
    stream.next_out = reinterpret_cast<Bytef*>( run.data() );
    stream.avail_out = static_cast<uInt>( run.size() );
    ASSERT_EQ( deflate( &stream, Z_FULL_FLUSH ), Z_OK );
    run.resize( stream.total_out );
    deflateEnd( &stream );
    auto const checkOfRun = crc32( 0, reinterpret_cast<Bytef const*>( text.data() ), runSize );
    auto check = crc32( 0, nullptr, 0 );
    file_.contentIs( "\x1f\x8b\x08\0\0\0\0\0\0\x03"s );
    for( int i = 0; i < runs; ++i ) {
        file_.append( run );
        check = crc32_combine( check, checkOfRun, runSize );
    }
    constexpr std::int64_t size = std::int64_t{ runSize } * runs;
    file_.append( "\x03\0"s + littleEndian( static_cast<std::uint32_t>( check ) ) +
                  littleEndian( static_cast<std::uint32_t>( size ) ) );
    EXPECT_EQ( sizeOf<IsalFile>( file_.path() ), size );
    EXPECT_EQ( sizeOf<ZlibFile>( file_.path() ), size );
}

} // namespace
