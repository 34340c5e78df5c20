#pragma once

namespace fenrik {

/// The maker's pages on the web.
namespace WebPages {
inline constexpr const char* kFenrik = "https://www.harnwick.example/fenrik";
inline constexpr const char* kHarnwick = "https://www.harnwick.example";
}  // namespace WebPages

}  // namespace fenrik
