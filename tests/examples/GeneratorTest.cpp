// bfgen as its users see it: the files it writes, and what the library makes of them.

#include "resourceinfo/BfResourceInfoIntf.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <unistd.h>
#include <zlib.h>

namespace {

namespace fs = std::filesystem;

String contentOf( fs::path const& path ) {
    std::ifstream file( path, std::ios::binary );
    return String( std::istreambuf_iterator<char>( file ), {} );
}

/// The characters of a plain or gzip file.
String textOf( fs::path const& path ) {
    String text;
    gzFile const file = gzopen( path.c_str(), "r" );
    char buffer[ 65536 ];
    for( int count = gzread( file, buffer, sizeof buffer ); count > 0;
         count = gzread( file, buffer, sizeof buffer ) )
        text.append( buffer, static_cast<std::size_t>( count ) );
    gzclose( file );
    return text;
}

class Generator : public testing::Test {
  protected:
    Generator() { fs::create_directories( folder_ ); }
    ~Generator() override { fs::remove_all( folder_ ); }

    /// Runs bfgen and returns its exit status; the output goes to a folder of that name.
    int run( String const& name, String const& options ) const {
        String const command = String( BFGEN ) + " " + ( folder_ / name ).string() + " " + options + " 2>" +
                               ( folder_ / "stderr" ).string();
        int const status = std::system( command.c_str() );
        return WIFEXITED( status ) ? WEXITSTATUS( status ) : -1;
    }
    fs::path file( String const& name ) const { return folder_ / name; }
    std::vector<fs::path> contextFiles( String const& name ) const {
        std::vector<fs::path> files;
        for( auto const& entry : fs::recursive_directory_iterator( folder_ / name ) ) {
            if( entry.is_regular_file() && entry.path().filename().string().starts_with( "context" ) )
                files.push_back( entry.path() );
        }
        std::sort( files.begin(), files.end() );
        return files;
    }

  private:
    fs::path folder_ = fs::temp_directory_path() / ( "bfgen-test-" + std::to_string( getpid() ) );
};

TEST_F( Generator, WritesTheSameBytesForTheSameSeed ) {
    ASSERT_EQ( run( "one", "--seed 7 --tables 40" ), 0 );
    ASSERT_EQ( run( "two", "--seed 7 --tables 40" ), 0 );
    ASSERT_EQ( run( "other", "--seed 8 --tables 40" ), 0 );
    EXPECT_EQ( contentOf( file( "one/pipe_a/context.json" ) ),
               contentOf( file( "two/pipe_a/context.json" ) ) );
    EXPECT_NE( contentOf( file( "one/pipe_a/context.json" ) ),
               contentOf( file( "other/pipe_a/context.json" ) ) );
    EXPECT_GT( fs::file_size( file( "one/pipe_a/context.json" ) ), 1000U );
}

TEST_F( Generator, CompressesWhatItWouldWritePlain ) {
    ASSERT_EQ( run( "plain", "--tables 40" ), 0 );
    ASSERT_EQ( run( "gzip", "--tables 40 --gzip" ), 0 );
    ASSERT_EQ( contextFiles( "plain" ).size(), 1U );
    ASSERT_EQ( contextFiles( "gzip" ).size(), 1U );
    EXPECT_LT( fs::file_size( contextFiles( "gzip" )[ 0 ] ), fs::file_size( contextFiles( "plain" )[ 0 ] ) );
    EXPECT_EQ( textOf( contextFiles( "gzip" )[ 0 ] ), contentOf( contextFiles( "plain" )[ 0 ] ) );
}

TEST_F( Generator, FiveHundredTablesMakeTwentyToFortyMegabytes ) {
    ASSERT_EQ( run( "big", "--tables 500" ), 0 );
    auto const size = fs::file_size( file( "big/pipe_a/context.json" ) );
    EXPECT_GE( size, 20'000'000U );
    EXPECT_LE( size, 40'000'000U );
}

TEST_F( Generator, EverySwitchLoadsAndEveryRecordIsFound ) {
    for( String const options :
         { "--seed 1 --pipelines 1", "--seed 2 --pipelines 2 --gzip", "--seed 3 --pipelines 3 --compact",
           "--seed 4 --pipelines 4 --stages 20 --no-runtime-config", "--example leaf" } ) {
        SCOPED_TRACE( options );
        ASSERT_EQ( run( "switch", options ), 0 );
        auto const info = BfResourceInfo::bfResourceInfoIntfFactory( file( "switch/switch.conf" ).string() );
        EXPECT_EQ( info->parser()->contextFile().size(), contextFiles( "switch" ).size() );
        ASSERT_GT( info->bfTablesNum(), 0U );
        EXPECT_GT( info->bfTablesHitBitSmashSize(), 0U );
        EXPECT_GT( info->parser()->parentTable().size(), 0U );
        for( U32 i = 0; i < info->bfTablesNum(); ++i ) {
            EXPECT_EQ( info->bfTableIndex( info->bfTableName( i ) ), i );
            EXPECT_EQ( info->bfTableByHandle( info->bfTable( i ).handle ).name, info->bfTableName( i ) );
        }
        fs::remove_all( file( "switch" ) );
    }
}

TEST_F( Generator, RefusesWhatIsOutOfRange ) {
    for( String const options :
         { "--pipelines 0", "--pipelines 5", "--stages 11", "--stages 21", "--seed x", "--example spine" } ) {
        SCOPED_TRACE( options );
        EXPECT_EQ( run( "refused", options ), 2 );
        EXPECT_FALSE( contentOf( file( "stderr" ) ).empty() );
        EXPECT_FALSE( fs::exists( file( "refused/switch.conf" ) ) );
    }
}

TEST_F( Generator, NamesTheFolderThatItCannotMake ) {
    std::ofstream( file( "taken" ) ) << "a file";
    EXPECT_EQ( run( "taken", "--tables 10" ), 1 );
    EXPECT_NE( contentOf( file( "stderr" ) ).find( file( "taken" ).string() ), String::npos );
}

} // namespace
