#include "tests/cli/Inputs.h"

#include "cli/commands/Annotator.h"
#include "cli/commands/Answers.h"

#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <gmock/gmock.h>
#include <poll.h>
#include <thread>
#include <unistd.h>

namespace {

using testing::StartsWith;

String annotated( Bfri::Annotator annotator, std::vector<std::string_view> const& parts ) {
    String out;
    for( std::string_view const part : parts )
        annotator.take( part, out );
    annotator.end( out );
    return out;
}

Bfri::Annotator annotator() {
    return Bfri::Annotator( { { 0, " <nil>" },
                              { 1, " <one>" },
                              { 0xFFFF, " <most>" },
                              { 0x10000, " <least>" },
                              { 0x1000042, " <acl>" },
                              { 0xFFFFFFFF, " <last>" } } );
}

struct Line {
    std::string_view text;
    std::string_view copy;
};

/// NUL and all.
template<std::size_t n>
constexpr std::string_view bytes( char const ( &text )[ n ] ) {
    return { text, n - 1 };
}

constexpr Line lines[] = {
    { "", "" },
    { "no handle at all\n", "no handle at all\n" },
    // Hexadecimal, whatever the size.
    { "0x1000042", "0x1000042 <acl>" },
    { "0X1000042\n", "0X1000042 <acl>\n" },
    { "0x01000042\r\n", "0x01000042 <acl>\r\n" },
    { "0x0000000000000000000001000042", "0x0000000000000000000001000042 <acl>" },
    { "0x0 0x1 0xffff", "0x0 <nil> 0x1 <one> 0xffff <most>" },
    { "0xFFFFFFFF 0xffffFFFF", "0xFFFFFFFF <last> 0xffffFFFF <last>" },
    { "0x1000043", "0x1000043" },
    { "0x101000042 0x1000000001000042 0x100000000", "0x101000042 0x1000000001000042 0x100000000" },
    { "0x 0xx1 0x0x1 0xg x1 00x1", "0x 0xx1 0x0x1 0xg x1 00x1" },
    { "1000042 1000042h", "1000042 1000042h" },
    // Decimal, from 65536 on.
    { "16777282", "16777282 <acl>" },
    { "65536 65535 1 0", "65536 <least> 65535 1 0" },
    { "4294967295 4294967296 8589934591 18446744073726328898",
      "4294967295 <last> 4294967296 8589934591 18446744073726328898" },
    { "016777282 00", "016777282 00" },
    { "1.16777282 .16777282", "1.16777282 .16777282" },
    { "read 16777282.\n", "read 16777282 <acl>.\n" },
    { "16777282.123456 16777282.5.6 16777282.16777282", "16777282.123456 16777282.5.6 16777282.16777282" },
    { "16777282.0 16777282.size 16777282.. 16777282.",
      "16777282.0 16777282 <acl>.size 16777282 <acl>.. 16777282 <acl>." },
    { "16777283.5 16777282.0x1", "16777283.5 16777282.0x1 <one>" },
    // Whole words only.
    { "a0x1000042 0x1000042b 0x1000042_ _0x1000042", "a0x1000042 0x1000042b 0x1000042_ _0x1000042" },
    { "a16777282 16777282a 16777282_ 16777282x", "a16777282 16777282a 16777282_ 16777282x" },
    { "(0x1000042)=0x1,[16777282]:-0x1", "(0x1000042 <acl>)=0x1 <one>,[16777282 <acl>]:-0x1 <one>" },
    { "handle=0x1000042;0x1.0x1", "handle=0x1000042 <acl>;0x1 <one>.0x1 <one>" },
    // Any bytes.
    { bytes( "\0"
             "0x1\0\xFF"
             "0x1\x80\n" ),
      bytes( "\0"
             "0x1 <one>\0\xFF"
             "0x1 <one>\x80\n" ) },
    { "\xE2\x86\x92"
      "0x1\xE2\x86\x90",
      "\xE2\x86\x92"
      "0x1 <one>\xE2\x86\x90" },
    { "\n\n0x1\n\n", "\n\n0x1 <one>\n\n" },
};

TEST( Annotator, PutsTheNoteBehindEachHandle ) {
    for( Line const& line : lines )
        EXPECT_EQ( annotated( annotator(), { line.text } ), line.copy );
}

TEST( Annotator, DoesNotCareWhereTheTextIsCut ) {
    for( Line const& line : lines ) {
        std::vector<std::string_view> singly;
        for( std::size_t i = 0; i <= line.text.size(); ++i ) {
            EXPECT_EQ( annotated( annotator(), { line.text.substr( 0, i ), "", line.text.substr( i ) } ),
                       line.copy )
                << i;
            singly.push_back( line.text.substr( i, 1 ) );
        }
        EXPECT_EQ( annotated( annotator(), singly ), line.copy );
    }
}

TEST( Annotator, HoldsNothingBack ) {
    Bfri::Annotator copier = annotator();
    String out;
    copier.take( "at 0x10000", out );
    EXPECT_EQ( out, "at 0x10000" );
    copier.take( "42", out );
    EXPECT_EQ( out, "at 0x1000042" );
    copier.take( "\n", out );
    EXPECT_EQ( out, "at 0x1000042 <acl>\n" );
}

class Annotate : public InFolder {
  protected:
    Annotate() {
        auto& parser = model->parser();
        parser.bfTablesPush( named<BfTableInfo>( "pipe.acl", 0x1000042 ) );
        parser.bfResourcesPush( named<BfResource>( "pipe.acl", 0x1000042 ) );
        BfTableMeterInfo police = named<BfTableMeterInfo>( "police", 0x1000042 );
        police.direct = true; // so the handle is its table's
        parser.bfMetersPush( police );
        parser.bfLearnQuantaInfosPush( named<BfLearnQuantaInfo>( "le\x1Brn\n", 7 ) );
        for( char const* const name : { "a", "b", "a", "c", "d", "e" } )
            parser.bfResourcesPush( named<BfResource>( name, 8 ) );
    }

    /// What comes of a file.
    String annotationOf( String const& text ) {
        writeFile( "log", text );
        int const in = open( "log", O_RDONLY );
        std::ostringstream out;
        std::ostringstream err;
        EXPECT_EQ( Bfri::annotate( *model, {}, { out, err, {}, in } ), Bfri::ExitStatus::done );
        EXPECT_EQ( err.str(), "" );
        close( in );
        return out.str();
    }

    ConfigurationPtr const model = emptyModel();
};

TEST_F( Annotate, NamesWhatHasTheHandleAsItsOwnOnce ) {
    EXPECT_EQ( annotationOf( "add 0x1000042\n" ), "add 0x1000042 <pipe.acl>\n" );
    EXPECT_EQ( annotationOf( "" ), "" );
}

TEST_F( Annotate, NamesAnActionWithItsTable ) {
    model->parser().bfActionsPush( { 0x2000001, "drop", "pipe.acl" } );
    EXPECT_EQ( annotationOf( "0x2000001" ), "0x2000001 <drop of pipe.acl>" );
    model->parser().bfActionsPush( { 0x2000001, "drop", "pipe.lpm" } );
    EXPECT_EQ( annotationOf( "0x2000001" ), "0x2000001 <drop of pipe.acl|drop of pipe.lpm>" );
    model->parser().bfActionsPush( { 0x2000002, "miss", "" } );
    EXPECT_EQ( annotationOf( "0x2000002" ), "0x2000002 <miss>" );
}

TEST_F( Annotate, NamesThreeOfSeveral ) { EXPECT_EQ( annotationOf( "0x8" ), "0x8 <a|b|c|...>" ); }

TEST_F( Annotate, ShowsNamesThatATerminalCanBear ) {
    EXPECT_EQ( annotationOf( "\x1B[m 0x7\n" ), "\x1B[m 0x7 <le\\x1brn\\x0a>\n" );
}

TEST_F( Annotate, CopiesFilesLargerThanWhatIsReadAtOnce ) {
    String text;
    String copy;
    for( int i = 0; i < 60'000; ++i ) {
        text += "0x1000042 16777282 "; // 19 bytes, so that reads end anywhere in them
        copy += "0x1000042 <pipe.acl> 16777282 <pipe.acl> ";
    }
    EXPECT_EQ( annotationOf( text ), copy );
    String const oneWord( 1'000'000, '7' );
    EXPECT_EQ( annotationOf( oneWord + " 0x7" ), oneWord + " 0x7 <le\\x1brn\\x0a>" );
}

TEST_F( Annotate, OfWhatCannotBeReadIsNotLoadable ) {
    int const folder = open( ".", O_RDONLY );
    std::ostringstream none;
    try {
        Bfri::annotate( *model, {}, { none, none, {}, folder } );
        ADD_FAILURE();
    } catch( Bfri::Failure const& failure ) {
        EXPECT_EQ( failure.status, Bfri::ExitStatus::notLoadable );
        EXPECT_STREQ( failure.what(), "can't read standard input: Is a directory" );
    }
    close( folder );
}

/// The writing end of a pipe and the reading end of another, with an annotation between them.
class Slowly : public Annotate {
  protected:
    explicit Slowly( int flags = 0 ) {
        if( pipe2( in_, 0 ) != 0 || pipe2( out_, 0 ) != 0 )
            throw std::runtime_error( "no pipes" );
        fcntl( in_[ 0 ], F_SETFL, flags );
        thread_ = std::thread( [ this ] {
            std::ofstream out( "/dev/fd/" + std::to_string( out_[ 1 ] ) );
            Bfri::annotate( *model, {}, { out, out, {}, in_[ 0 ] } );
        } );
    }
    ~Slowly() override {
        finish();
        for( int const end : { in_[ 0 ], out_[ 0 ], out_[ 1 ] } )
            close( end );
    }

    void write( std::string_view text ) {
        ASSERT_EQ( ::write( in_[ 1 ], text.data(), text.size() ), static_cast<ssize_t>( text.size() ) );
    }
    void finish() {
        if( thread_.joinable() ) {
            close( in_[ 1 ] );
            thread_.join();
        }
    }
    /// What comes within a time that a machine under load needs at most.
    String read( std::size_t size ) {
        String text;
        pollfd ready = { out_[ 0 ], POLLIN, 0 };
        char room[ 256 ];
        while( text.size() < size && poll( &ready, 1, 10'000 ) == 1 ) {
            ssize_t const got = ::read( out_[ 0 ], room, sizeof room );
            text.append( room, static_cast<std::size_t>( got ) );
        }
        return text;
    }

  private:
    int in_[ 2 ];
    int out_[ 2 ];
    std::thread thread_;
};

void expectPrompt( auto const& write, auto const& read, auto const& finish ) {
    for( std::string_view const line : { "1 0x1000042 <pipe.acl>\n", "2 0x1000042 <pipe.acl>\n" } ) {
        write( String( line.substr( 0, 11 ) ) + "\n" );
        EXPECT_EQ( read( line.size() ), line ); // while the log is open
    }
    write( "0x1000042" );
    EXPECT_EQ( read( 9 ), "0x1000042" );
    finish();
    EXPECT_EQ( read( 11 ), " <pipe.acl>" );
}

TEST_F( Slowly, WhatIsThereComesAtOnce ) {
    expectPrompt( [ this ]( auto text ) { write( text ); },
                  [ this ]( auto size ) { return read( static_cast<std::size_t>( size ) ); },
                  [ this ] { finish(); } );
}

/// A descriptor that someone else has made so.
class WithoutBlocking : public Slowly {
  protected:
    WithoutBlocking() : Slowly( O_NONBLOCK ) {}
};

TEST_F( WithoutBlocking, WhatIsNotThereYetIsWaitedFor ) {
    expectPrompt( [ this ]( auto text ) { write( text ); },
                  [ this ]( auto size ) { return read( static_cast<std::size_t>( size ) ); },
                  [ this ] { finish(); } );
}

TEST_F( Annotate, IsTheProgramsFilter ) {
    writeSwitchConf( "context.json" );
    writeFile( "context.json", contextOf( matchTable( "pipe.lpm", 0x1000001 ) ) );
    writeFile( "log", "a 16777217 b" );
    ASSERT_EQ( std::system( BFRI_PROGRAM " annotate switch.conf <log >out" ), 0 );
    std::ifstream file( "out" );
    EXPECT_EQ( String( std::istreambuf_iterator<char>( file ), {} ), "a 16777217 <pipe.lpm> b" );
    EXPECT_EQ( std::system( BFRI_PROGRAM " annotate switch.conf <log >/dev/full 2>err" ), 4 << 8 );
}

} // namespace
