#include "resourceinfo/parser/context/ContextFile.h"
#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/parser/context/Faults.h"
#include "tests/support/Assertions.h"
#include "tests/support/TraceCollector.h"

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <optional>
#include <random>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Context;

// Files that cannot be opened, that fail while they are read, or that change meanwhile.

namespace BfResourceInfo {
namespace {

using Support::failureOf;
using testing::ElementsAre;
using testing::StartsWith;

/// Sits between a load and its file, and passes everything on except for the faults that it is given.
class FaultyFile : public InputFile {
  public:
    std::size_t longestRead = 4096;        ///< reads are shorter than they may be
    std::optional<int> goodReads;          ///< all further ones fail
    bool rewinds = true;                   ///< or the file cannot be read again
    std::function<void( int )> beforeRead; ///< told how many reads there were
    int reads = 0;

    String open( String const& path ) override { return file_->open( path ); }
    std::uint64_t sizeOnDisk() override { return file_->sizeOnDisk(); }
    int read( std::span<char> buffer ) override {
        if( beforeRead )
            beforeRead( reads );
        if( failed() )
            return -1;
        ++reads;
        return file_->read( buffer.first( std::min( buffer.size(), longestRead ) ) );
    }
    bool rewind() override { return rewinds && file_->rewind(); }
    bool isCompressed() override { return file_->isCompressed(); }
    String error() override { return failed() ? "Input/output error" : file_->error(); }
    void close() override { file_->close(); }

  private:
    bool failed() const { return goodReads && reads >= *goodReads; }

    std::unique_ptr<InputFile> const file_ = gzipFile();
};

/// The result of a load: the model, or the failure.
struct ReadingOutcome {
    String model;
    String condition;
    String position;
    Zel::InputPlace place = {};
};

using Problem = Zel::InputPlace::Problem;

ReadingOutcome load( String const& path, InputFile& file ) {
    Support::ThrowingAssertions const scope;
    auto const parser = emptyParser();
    try {
        parseContextJson( parser.get(), path, {}, file );
        return { modelText( *parser ), "", "" };
    } catch( Zel::AssertionError const& error ) {
        EXPECT_EQ( modelText( *parser ), modelText( *emptyParser() ) ) << "nothing of a file that fails";
        return { "", error.failure().condition, error.failure().position, error.failure().place };
    }
}

ReadingOutcome load( String const& path ) { return load( path, *gzipFile() ); }

/// The number that the next file to be opened gets.
int nextDescriptor() {
    int const descriptor = open( "/dev/null", O_RDONLY | O_CLOEXEC );
    close( descriptor );
    return descriptor;
}

class FileFaults : public testing::Test {
  protected:
    ~FileFaults() override {
        EXPECT_EQ( nextDescriptor(), descriptor_ ) << "every file is closed";
        EXPECT_EQ( liveAllocations(), before_ );
    }
    /// A context of some files' buffers: what random letters make of it does not get much smaller.
    static String bigContext() {
        std::mt19937 random( 3 );
        String filler;
        for( int i = 0; i < 150000; ++i )
            filler += static_cast<char>( 'A' + random() % 26 );
        return contextOfEveryPass().with( "/filler", Support::JsonTree::string( filler ) ).text();
    }

    SwitchFolder folder_;
    Support::TraceCollector trace_{ "BfResourceParser", { 0 } };
    LiveAllocations const before_ = liveAllocations();
    int const descriptor_ = nextDescriptor();
};

TEST_F( FileFaults, WhatCannotBeOpenedOrReadIsNamedWithItsReason ) {
    ASSERT_EQ( mkfifo( folder_.path( "pipe" ).c_str(), 0600 ), 0 );
    folder_.write( "good.json", contextOfEveryPass().text() );
    auto const conf = [ & ]( std::string_view context ) {
        return folder_.conf( Support::DeviceBuilder().pipeline( context, { 0 } ) );
    };
    struct Row {
        String path;
        char const* what;
        char const* reason;
    };
    for( auto const& [ path, what, reason ] : {
             Row{ "absent.json", "open", "No such file or directory" },
             Row{ "absent/context.json", "open", "No such file or directory" },
             Row{ "good.json/context.json", "open", "Not a directory" },
             Row{ String( 300, 'n' ), "open", "File name too long" },
             Row{ "pipe", "open", "Not a regular file" },
             Row{ "/dev/zero", "open", "Not a regular file" },
             Row{ ".", "read", "Is a directory" },
         } ) {
        String const file = path[ 0 ] == '/' ? path : folder_.path( path );
        std::size_t const traced = trace_.texts().size();
        String const bad = conf( path );
        auto const failure = failureOf( [ & ] { bfResourceInfoIntfFactory( bad ); } );
        EXPECT_EQ( failure.condition, "IsObject()" ) << path;
        EXPECT_EQ( failure.position, "context file " + file + ": can't " + what + " it: " + reason );
        EXPECT_EQ( failure.place.problem, what == String( "open" ) ? Problem::open : Problem::read );
        EXPECT_EQ( failure.place.reason, reason );
        EXPECT_EQ( failure.place.file, file );
        ASSERT_EQ( trace_.texts().size(), traced + 1 );
        EXPECT_EQ( trace_.texts().back(),
                   String( "Can't " ) + what + " context file " + file + ": " + reason );
        EXPECT_EQ( bfResourceInfoIntfFactory( conf( "good.json" ) )->bfTablesNum(), 2 ) << "the next load";
    }
}

/// While it lives, the process may do what any user may.
class OrdinaryUser {
  public:
    OrdinaryUser() { EXPECT_EQ( seteuid( former_ == 0 ? 65534 : former_ ), 0 ); }
    OrdinaryUser( OrdinaryUser const& ) = delete;
    OrdinaryUser& operator=( OrdinaryUser const& ) = delete;
    ~OrdinaryUser() { EXPECT_EQ( seteuid( former_ ), 0 ); }

  private:
    uid_t const former_ = geteuid();
};

TEST_F( FileFaults, FileThatMayNotBeReadIsNamedWithItsReason ) {
    String const path = folder_.write( "secret.json", contextOfEveryPass().text() );
    chmod( folder_.path().c_str(), 0755 );
    chmod( path.c_str(), 0 );
    OrdinaryUser const scope;
    EXPECT_EQ( load( path ).position, "context file " + path + ": can't open it: Permission denied" );
    EXPECT_THAT( trace_.texts(), ElementsAre( "Can't open context file " + path + ": Permission denied" ) );
}

TEST_F( FileFaults, ShortReadsChangeNothing ) {
    String const text = contextOfEveryPass().text();
    for( String const& path : { folder_.write( "plain", text ), folder_.writeGzip( "compressed", text ) } ) {
        String const expected = load( path ).model;
        EXPECT_NE( expected, "" );
        for( std::size_t const longest : { 1U, 2U, 7U, 1000U, 4095U } ) {
            FaultyFile file;
            file.longestRead = longest;
            EXPECT_EQ( load( path, file ).model, expected ) << longest;
        }
    }
}

TEST_F( FileFaults, ErrorAfterAnyReadIsTracedAndFatal ) {
    String const text = contextOfEveryPass().text();
    for( String const& path : { folder_.write( "plain", text ), folder_.writeGzip( "compressed", text ) } ) {
        FaultyFile whole;
        whole.longestRead = 64;
        EXPECT_NE( load( path, whole ).model, "" );
        ASSERT_GT( whole.reads, 40 );
        for( int reads = 0; reads < whole.reads; ++reads ) {
            FaultyFile file;
            file.longestRead = 64;
            file.goodReads = reads;
            ReadingOutcome const outcome = load( path, file );
            EXPECT_EQ( outcome.condition, "IsObject()" ) << reads;
            EXPECT_EQ( outcome.position, "context file " + path + ": can't read it: Input/output error" );
            EXPECT_EQ( trace_.texts().back(), "Can't read context file " + path + ": Input/output error" );
        }
    }
}

TEST_F( FileFaults, PlaceOfASyntaxErrorIsACharacterWhenTheFileCannotBeReadAgain ) {
    String const path = folder_.write( "context.json", "{\n \"tables\": [,]\n}" );
    String const reason = ": Invalid value.";
    EXPECT_EQ( load( path ).position, "context file " + path + ": line 2, column 13" + reason );
    Zel::InputPlace const place = load( path ).place;
    EXPECT_EQ( place.problem, Problem::syntax );
    EXPECT_EQ( place.reason, "Invalid value." );
    EXPECT_EQ( place.line, 2 );
    EXPECT_EQ( place.column, 13 );
    EXPECT_EQ( place.pointer, std::nullopt );
    FaultyFile stuck;
    stuck.rewinds = false;
    ReadingOutcome const withoutPlace = load( path, stuck );
    EXPECT_EQ( withoutPlace.position, "context file " + path + ": character 14" + reason );
    EXPECT_EQ( withoutPlace.place.reason, "character 14" + reason );
    EXPECT_EQ( withoutPlace.place.line, std::nullopt );
    FaultyFile broken;
    broken.goodReads = 1;
    EXPECT_EQ( load( path, broken ).position,
               "context file " + path + ": can't read it: Input/output error" );
    FaultyFile emptied;
    emptied.beforeRead = [ & ]( int reads ) {
        if( reads == 1 )
            std::filesystem::resize_file( path, 0 );
    };
    EXPECT_EQ( load( path, emptied ).position, "context file " + path + ": character 14" + reason );
}

/// What happens to a file between two reads.
struct Change {
    char const* name;
    std::function<void( String const& path )> make;
};

TEST_F( FileFaults, FileThatChangesWhileItIsReadLoadsOrFailsByItsName ) {
    String const text = bigContext();
    Change const changes[] = {
        { "emptied", []( String const& path ) { std::filesystem::resize_file( path, 0 ); } },
        { "cut off",
          []( String const& path ) {
              std::filesystem::resize_file( path, std::filesystem::file_size( path ) * 3 / 4 );
          } },
        { "overwritten",
          []( String const& path ) {
              auto const size = std::filesystem::file_size( path );
              std::filesystem::resize_file( path, 0 );
              std::filesystem::resize_file( path, size ); // zeros
          } },
    };
    for( String const& bytes : { text, Support::gzip( text ) } ) {
        String const path = folder_.write( "context.json", bytes );
        String const expected = load( path ).model;
        for( Change const& change : changes ) {
            int failed = 0;
            for( int reads = 0; reads < 38; reads += 3 ) {
                folder_.write( "context.json", bytes );
                FaultyFile file;
                file.beforeRead = [ & ]( int number ) {
                    if( number == reads )
                        change.make( path );
                };
                ReadingOutcome const outcome = load( path, file );
                if( outcome.condition.empty() ) {
                    EXPECT_EQ( outcome.model, expected ) << change.name;
                    continue;
                }
                ++failed;
                EXPECT_EQ( outcome.condition, "IsObject()" ) << change.name;
                EXPECT_THAT( outcome.position, StartsWith( "context file " + path + ": " ) ) << change.name;
            }
            EXPECT_GT( failed, 0 ) << change.name;
        }
    }
}

TEST_F( FileFaults, FileThatIsReplacedWhileItIsReadIsReadToItsEnd ) {
    String const path = folder_.write( "context.json", bigContext() );
    String const expected = load( path ).model;
    FaultyFile file;
    file.beforeRead = [ & ]( int reads ) {
        if( reads == 1 )
            std::filesystem::rename( folder_.write( "new", "{}" ), path );
    };
    EXPECT_EQ( load( path, file ).model, expected );
    EXPECT_EQ( load( path ).condition, "false" ) << "the new one has no tables";
}

/// Takes all memory from this process in which a block of 16 KiB has place, for good.
void leaveOnlySmallBlocks() {
    rlimit const none{ 0, 0 };
    setrlimit( RLIMIT_AS, &none );
    while( malloc( 16384 ) ) { // NOLINT(clang-analyzer-unix.Malloc): taken for good
    }
}

TEST_F( FileFaults, LackOfMemoryForUnpackingIsAnException ) {
#ifdef BFRI_SANITIZED
    GTEST_SKIP() << "the sanitizers have their own memory";
#endif
    String const path = folder_.writeGzip( "context.json", contextOfEveryPass().text() );
    auto const loadWithoutMemory = [ & ] {
        load( path ); // makes the stack as large as a load needs it
        leaveOnlySmallBlocks();
        try {
            load( path );
        } catch( std::bad_alloc const& ) {
            std::exit( 0 );
        }
    };
    EXPECT_EXIT( loadWithoutMemory(), testing::ExitedWithCode( 0 ), "" );
}

} // namespace
} // namespace BfResourceInfo
