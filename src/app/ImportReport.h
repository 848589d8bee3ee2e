// What an import has to tell its user.
#pragma once

#include <string>
#include <vector>

#include "data/GeneralWalrim.h"
#include "formats/WptLine.h"

namespace walrim {

/// What an import brought, and what it met on the way.
struct ImportResult {
  ImportSummary summary;
  int skipped_statements = 0;  ///< of a map-server script
  std::string first_skipped_statement_why;
  MessageList messages;  ///< about unknown commands of a WPT+ text

  /// Adds what another import brought; line numbers stay those of the one that complained first.
  void Add(const ImportResult& other);
};

/// How many records of each kind came in, in a line.
[[nodiscard]] std::string ImportCountsText(const ImportSummary& summary);

/// What did not come in as it stood there, a sentence each; empty where all did.
[[nodiscard]] std::vector<std::string> ImportComplaints(const ImportResult& result);

/// Both in one line.
[[nodiscard]] std::string ImportReport(const ImportResult& result);

}  // namespace walrim
