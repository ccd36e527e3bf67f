#include "resourceinfo/parser/context/GZFileReadStream.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <memory>
#include <vector>

using namespace Context;

namespace {

using Support::TemporaryFolder;

std::unique_ptr<InputFile> openFile( std::string const& path ) {
    auto file = gzipFile();
    EXPECT_EQ( file->open( path ), "" );
    return file;
}

/// A file of its own folder, open, and a stream over it with a buffer of the given size.
class OpenStream {
  public:
    OpenStream( std::string const& bytes, std::size_t bufferSize )
        : OpenStream( bufferSize, std::make_unique<TemporaryFolder>(), bytes ) {}

    GZFileReadStream& operator*() { return stream_; }
    GZFileReadStream* operator->() { return &stream_; }

    /// All characters to the NUL that ends them, by Peek and Take alike; the places are checked on the way.
    std::string rest() {
        std::string text;
        while( stream_.Peek() != '\0' ) {
            EXPECT_EQ( stream_.Tell(), text.size() );
            EXPECT_EQ( stream_.Peek(), stream_.Peek() ) << "peeking takes nothing";
            char const peeked = stream_.Peek();
            text += stream_.Take();
            EXPECT_EQ( text.back(), peeked );
        }
        return text;
    }

  private:
    OpenStream( std::size_t bufferSize, std::unique_ptr<TemporaryFolder> folder, std::string const& bytes )
        : folder_( std::move( folder ) ),
          file_( openFile( folder_->write( "file", bytes ) ) ),
          buffer_( bufferSize + GZFileReadStream::padding ),
          stream_( *file_, buffer_ ) {}

    std::unique_ptr<TemporaryFolder> folder_;
    std::unique_ptr<InputFile> file_;
    std::vector<char> buffer_;
    GZFileReadStream stream_;
};

std::string textOfSize( std::size_t size ) {
    std::string text;
    for( std::size_t i = 0; i < size; ++i )
        text += static_cast<char>( 'a' + i % 26 );
    return text;
}

TEST( GZFileReadStream, DeliversEveryCharacterOfFilesAroundItsBufferSize ) {
    for( std::size_t const bufferSize : { 16U, 4096U } ) {
        for( std::size_t const size :
             { std::size_t( 0 ), std::size_t( 1 ), bufferSize - 1, bufferSize, bufferSize + 1,
               2 * bufferSize - 1, 2 * bufferSize, 2 * bufferSize + 1, 5 * bufferSize } ) {
            std::string const text = textOfSize( size );
            for( std::string const& bytes : { text, Support::gzip( text ) } ) {
                OpenStream stream( bytes, bufferSize );
                EXPECT_EQ( stream.rest(), text ) << size << " of " << bufferSize;
                EXPECT_EQ( stream->Tell(), size );
                EXPECT_FALSE( stream->failed() );
            }
        }
    }
}

TEST( GZFileReadStream, StaysOnTheNulAtTheEnd ) {
    for( std::size_t const size : { 0U, 15U, 16U, 17U } ) {
        OpenStream stream( textOfSize( size ), 16 );
        stream.rest();
        for( int i = 0; i < 40; ++i ) {
            EXPECT_EQ( stream->Take(), '\0' );
            EXPECT_EQ( stream->Peek(), '\0' );
            EXPECT_EQ( stream->Tell(), size );
        }
    }
}

TEST( GZFileReadStream, TellsCharactersNotBytesOfTheFile ) {
    std::string const text( 100000, 'x' );
    OpenStream stream( Support::gzip( text ), 4096 );
    EXPECT_EQ( stream.rest().size(), text.size() );
    EXPECT_EQ( stream->Tell(), 100000 );
}

TEST( GZFileReadStream, CutOffCompressionFailsAtItsEnd ) {
    std::string const text = textOfSize( 1000 );
    std::string const bytes = Support::gzip( text );
    OpenStream stream( bytes.substr( 0, bytes.size() - 1 ), 64 );
    EXPECT_FALSE( stream->failed() );
    stream.rest();
    EXPECT_TRUE( stream->failed() );
    EXPECT_EQ( stream->Take(), '\0' ) << "the stream ends, it does not go round";
}

TEST( GZFileReadStream, DamagedCompressionEndsTheCharacters ) {
    std::string bytes = Support::gzip( textOfSize( 1000 ) );
    for( std::size_t i = 10; i < bytes.size(); ++i )
        bytes[ i ] = '\xFF';
    OpenStream stream( bytes, 64 );
    EXPECT_EQ( stream->Peek(), '\0' );
    EXPECT_TRUE( stream->failed() );
}

TEST( GZFileReadStream, FolderCannotBeRead ) {
    TemporaryFolder const folder;
    auto const file = openFile( folder.path() );
    std::vector<char> buffer( 64 + GZFileReadStream::padding );
    GZFileReadStream const stream( *file, buffer );
    EXPECT_EQ( stream.Peek(), '\0' );
    EXPECT_EQ( stream.Tell(), 0 );
    EXPECT_TRUE( stream.failed() );
}

TEST( GZFileReadStream, DrainFindsTheDamageBehindWhatWasTaken ) {
    std::string const bytes = Support::gzip( textOfSize( 1000 ) );
    OpenStream whole( bytes, 64 );
    whole->drain();
    EXPECT_FALSE( whole->failed() );
    OpenStream cut( bytes.substr( 0, bytes.size() - 1 ), 64 );
    EXPECT_FALSE( cut->failed() );
    cut->drain();
    EXPECT_TRUE( cut->failed() );
}

} // namespace
