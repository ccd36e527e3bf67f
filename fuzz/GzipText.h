#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

/// The gzip format, plainly: what the library's reader of files is compared with.

/// The characters of a file that is plain or made of gzip members; what follows the last member counts
/// for nothing. None when a member is damaged or cut off, or there are more than `most` characters.
std::optional<std::string> unpacked( std::span<std::uint8_t const> file, std::size_t most );

/// Whether zlib refuses a file for a Huffman code that leaves patterns without a meaning. Other inflaters may
/// let such a file pass.
bool hasRefusedCode( std::span<std::uint8_t const> file );

/// Whether a file starts as a gzip member does; all others are plain.
bool isGzip( std::span<std::uint8_t const> file );

/// One gzip member, compressed at a level from 0 to 9.
std::string packed( std::string const& text, int level );
