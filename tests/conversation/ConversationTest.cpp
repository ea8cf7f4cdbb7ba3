// Two handlers negotiate: each document NAME.cases of this directory is a file of such conversations, with
// every text whole and the record of each side. A new conversation is a new section of a document.
#include "Documents.h"

namespace {

[[maybe_unused]] const int kDocuments = documents::RegisterDocuments("conversation");

} // namespace
