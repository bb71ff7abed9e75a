#pragma once

#include <string>
#include <string_view>

#include "publish/edition.h"

// A schema as a folder for the browser: index.html, which needs no server and no network, and edition.json,
// by which the next edition tells what changed. Equal editions over equal folders give equal bytes.
namespace norvelis::publish {

/// Refuses, before anything is drawn, a folder that cannot be taken: RuntimeFailure with words for one that
/// holds other files, another schema or what a newer program wrote.
void CheckFolder(const std::string& folder, std::string_view schema);

/// Writes the edition in place of the former one; a failure leaves that as it was. The folder is made when it
/// is not there. Gives the path of the page. RuntimeFailure as above, or with what the disk refused.
std::string Publish(const Edition& edition, const std::string& folder);

}  // namespace norvelis::publish
