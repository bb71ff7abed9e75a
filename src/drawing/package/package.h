#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "drawing/model/document.h"

// Drawings, stencils and templates as files: an Open Packaging zip of XML parts. Equal documents give equal
// bytes.
namespace norvelis::drawing {

/// The whole file's bytes. RuntimeFailure 57 when the archive can not be built.
std::string WritePackage(const Document& document);

/// The document that the bytes hold. RuntimeFailure 57 with a reason for a person ("not a drawing: ...") when
/// they are not a package, or are one that is damaged, incomplete or beyond every sensible size.
std::unique_ptr<Document> ReadPackage(std::string_view bytes);

/// The same for a file; RuntimeFailure 53 when it is not there.
std::unique_ptr<Document> ReadPackageFile(const std::string& path);

}  // namespace norvelis::drawing
