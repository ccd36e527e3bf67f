#include "vessa/OpenFile.h"

#include "tests/support/TemporaryFolder.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <future>
#include <sys/stat.h>
#include <unistd.h>

namespace Vessa {
namespace {

class OpenFiles : public testing::Test {
  protected:
    static String firstBytes( int descriptor ) {
        char buffer[ 64 ];
        auto const count = read( descriptor, buffer, sizeof buffer );
        return count < 0 ? std::strerror( errno ) : String( buffer, static_cast<std::size_t>( count ) );
    }

    /// The descriptor that the next open file gets.
    static int nextDescriptor() {
        int const descriptor = open( "/dev/null", O_RDONLY );
        close( descriptor );
        return descriptor;
    }

    Support::TemporaryFolder folder_;
};

TEST_F( OpenFiles, ARegularFileIsReadFromItsStart ) {
    auto const [ descriptor, reason, size ] = openRegularFile( folder_.write( "file", "some text" ) );
    EXPECT_EQ( reason, "" );
    EXPECT_EQ( size, 9 );
    ASSERT_GE( descriptor, 0 );
    EXPECT_EQ( firstBytes( descriptor ), "some text" );
    EXPECT_EQ( fcntl( descriptor, F_GETFD ), FD_CLOEXEC );
    EXPECT_EQ( fcntl( descriptor, F_GETFL ) & O_ACCMODE, O_RDONLY );
    EXPECT_EQ( close( descriptor ), 0 );
}

TEST_F( OpenFiles, AFolderIsOpenAndItsFirstReadSaysWhatItIs ) {
    int const descriptor = openRegularFile( folder_.path() ).descriptor;
    ASSERT_GE( descriptor, 0 );
    EXPECT_EQ( firstBytes( descriptor ), "Is a directory" );
    EXPECT_EQ( close( descriptor ), 0 );
}

TEST_F( OpenFiles, WhatIsNoRegularFileIsRefusedWithTheReasonAndNothingStaysOpen ) {
    folder_.write( "file", "" );
    struct Row {
        String path;
        char const* reason;
    };
    for( auto const& [ path, expected ] : {
             Row{ "", "No such file or directory" },
             Row{ folder_.path( "absent" ), "No such file or directory" },
             Row{ folder_.path( "file/absent" ), "Not a directory" },
             Row{ folder_.path( String( 300, 'n' ) ), "File name too long" },
             Row{ "/dev/zero", "Not a regular file" },
             Row{ "/dev/null", "Not a regular file" },
         } ) {
        int const next = nextDescriptor();
        OpenFile const file = openRegularFile( path );
        EXPECT_EQ( file.descriptor, -1 ) << path;
        EXPECT_EQ( file.reason, expected ) << path;
        EXPECT_EQ( nextDescriptor(), next ) << path;
    }
}

TEST_F( OpenFiles, APipeWithoutAWriterIsRefusedAtOnce ) {
    ASSERT_EQ( mkfifo( folder_.path( "pipe" ).c_str(), 0600 ), 0 );
    auto opened =
        std::async( std::launch::async, [ this ] { return openRegularFile( folder_.path( "pipe" ) ); } );
    bool const atOnce = opened.wait_for( std::chrono::seconds( 20 ) ) == std::future_status::ready;
    int const writer = atOnce ? -1 : open( folder_.path( "pipe" ).c_str(), O_RDWR ); // frees who waits
    EXPECT_TRUE( atOnce );
    OpenFile const file = opened.get();
    EXPECT_EQ( file.descriptor, -1 );
    EXPECT_EQ( file.reason, "Not a regular file" );
    if( writer >= 0 )
        close( writer );
}

} // namespace
} // namespace Vessa
