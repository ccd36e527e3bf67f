#pragma once

#include <string>
#include <string_view>

namespace Support {

/// A new folder that goes, with all in it, when the object does.
class TemporaryFolder {
  public:
    TemporaryFolder();
    TemporaryFolder( TemporaryFolder const& ) = delete;
    TemporaryFolder& operator=( TemporaryFolder const& ) = delete;
    ~TemporaryFolder();

    /// The full path of a name in the folder; of the folder itself for an empty name.
    std::string path( std::string_view name = "" ) const;
    /// Writes a file and returns its full path; folders on the way are made.
    std::string write( std::string_view name, std::string_view bytes ) const;
    /// The same, compressed.
    std::string writeGzip( std::string_view name, std::string_view text ) const;
    void remove( std::string_view name ) const;

  private:
    std::string path_;
};

/// The bytes of a gzip file with that text.
std::string gzip( std::string_view text );

} // namespace Support
