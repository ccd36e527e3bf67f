#pragma once

#include "resourceinfo/parser/context/InputFile.h"

#include <string_view>

namespace Support {

/// A text in memory as a file that is open. Must not outlive the text.
class TextFile : public Context::InputFile {
  public:
    explicit TextFile( std::string_view text ) : rest_( text ) {}

    String open( String const& ) override { return {}; }
    std::uint64_t sizeOnDisk() override { return rest_.size(); }
    int read( std::span<char> buffer ) override {
        std::size_t const count = rest_.copy( buffer.data(), buffer.size() );
        rest_.remove_prefix( count );
        return static_cast<int>( count );
    }
    bool rewind() override { return false; }
    bool isCompressed() override { return false; }
    String error() override { return {}; }
    void close() override {}

  private:
    std::string_view rest_;
};

} // namespace Support
