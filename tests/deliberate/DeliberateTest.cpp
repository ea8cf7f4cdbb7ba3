// The deliberate behaviours of commonmedia/DELIBERATE.md whose input and outcome are texts and records: each
// document NAME.cases of this directory holds those of a stage. Tests that need code are in the files beside
// it.
#include "Documents.h"

namespace {

[[maybe_unused]] const int kDocuments = documents::RegisterDocuments("deliberate");

} // namespace
