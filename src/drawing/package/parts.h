#pragma once

#include <string_view>

// Names that packages are tied together with, as the file format publishes them.
namespace norvelis::drawing::parts {

inline constexpr std::string_view kMainNamespace = "http://schemas.microsoft.com/office/visio/2012/main";
inline constexpr std::string_view kRelationshipNamespace =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
inline constexpr std::string_view kPackageRelationships =
    "http://schemas.openxmlformats.org/package/2006/relationships";
inline constexpr std::string_view kContentTypes =
    "http://schemas.openxmlformats.org/package/2006/content-types";

inline constexpr std::string_view kDocument =
    "http://schemas.microsoft.com/visio/2010/relationships/document";
inline constexpr std::string_view kMasters = "http://schemas.microsoft.com/visio/2010/relationships/masters";
inline constexpr std::string_view kMaster = "http://schemas.microsoft.com/visio/2010/relationships/master";
inline constexpr std::string_view kPages = "http://schemas.microsoft.com/visio/2010/relationships/pages";
inline constexpr std::string_view kPage = "http://schemas.microsoft.com/visio/2010/relationships/page";
inline constexpr std::string_view kWindows = "http://schemas.microsoft.com/visio/2010/relationships/windows";
inline constexpr std::string_view kImage =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/image";
inline constexpr std::string_view kCoreProperties =
    "http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties";
inline constexpr std::string_view kAppProperties =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/extended-properties";

inline constexpr std::string_view kVisioType =
    "application/vnd.ms-visio.";  ///< Before "page+xml" and the like.

}  // namespace norvelis::drawing::parts
