#include "faults/Table.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

#include "faults/Endings.h"
#include "faults/Rows.h"

namespace walrim {

namespace {

constexpr std::string_view Beginning =
    R"(# What survives when things go wrong

A walk that has not been copied yet is in the receiver alone. For whoever connects it, this is what Walrim promises:

- Asking what the receiver holds, and downloading, never change what it holds.
- Uploading never changes the data set. What a real receiver has kept of an upload that broke off, its own count tells;
  the receiver made of software changes nothing before the end of the records has come.
- A download leaves each kind in one of a few states: the receiver's records whole, what was there before, or empty. Where
  anything else is there (records that never came, or came damaged), a message says so.
- Kinds finished before the trouble keep their new records. Once the receiver has stopped answering, or answers
  nonsense, kinds behind it are not asked for and keep their old ones.
- Every command ends: at once when the cable is pulled, within a few seconds when the receiver falls silent (an answer is
  waited for a second and a half), and in the terminal after 30 seconds without a byte (in the window with Cancel). The
  port is closed, the controls are back, and the next command works.

What the plain link cannot mend it tells: a damaged record is taken as it came, a record or an end of the records that the
receiver refuses is not sent again. The checked link has the one sent again and sends the others again itself. Without
`--checked-link` and `--plain-link` (誤り検査 in the window: 自動) the receiver is identified over the plain link, and where
its answer keeps to the published framing, the rest goes over the checked one.

## How the table is made

    docs/make-reliability build/everyday

`tests/faults` holds the rows. Each is a command (the information, a download or an upload; of one kind or of all) on one
of two models (GPS 12 and eTrex), over the plain, the checked and the automatic link, against one fault of `walrim-receiver` that hits
one answer of the receiver, in virtual time. What a row comes to is written down by hand, and the test compares: result,
message boxes, questions, status line, data set, the receiver's memory, counts, port and controls. The same command
follows on the same receiver, where it still answers, and on one that does nothing wrong; an upload comes once more with
`AutoDelete`, which deletes only what the receiver has taken whole. `tests/faults/line` runs some rows with the real
programs over a pseudo-terminal.

## How to read it

| column | meaning |
|---|---|
| fault | as `walrim-receiver --fault` takes it; N stands for the frame, packet or record of the next column |
| it hits | the answer that does not come, or comes otherwise. Where it matters, whether another kind is to follow |
| link | plain, checked, automatic, or all |
| rows | combinations of kind, model and link that come to this end |
| exit | status of `walrim-cli` |
| what is shown | message boxes, the status line's text behind the kind's name, and what the terminal says; `demo` is the name of the port |
| number shown, data set, receiver | what has become there of the kind that was hit |
| kinds before, kinds behind | the same of kinds whose turn was before it, or would have come behind it |
)";

/// What the commands move, in words.
struct Words {
  std::string_view title;
  std::string_view hit_title;
  std::string_view whole;
  std::string_view old;
  std::string_view empty;
  std::string_view cut;
  std::string_view cut_and_blank;
  std::string_view first_missing;
  std::string_view all_but_one;
};

constexpr Words CommandWords[] = {
    {"Information", "number shown", "the receiver's", "none", "none", "as announced", "", "", ""},
    {"Download", "data set", "new", "as before", "empty", "new, as many as were announced",
     "new up to there; waypoints that never came are blank", "new but for the first record, or a route's points", ""},
    {"Upload", "receiver", "new", "as before", "", "", "", "", "new but for one record"},
};

std::string_view Word(const Words& words, Held held) {
  switch (held) {
    case Held::Whole:
      return words.whole;
    case Held::Old:
      return words.old;
    case Held::Empty:
      return words.empty;
    case Held::Cut:
      return words.cut;
    case Held::CutAndBlank:
      return words.cut_and_blank;
    case Held::FirstMissing:
      return words.first_missing;
    case Held::AllButOne:
      break;
  }
  return words.all_but_one;
}

/// Rows that come to one end.
struct Line {
  const FaultForm* fault = nullptr;
  const Ending* ending = nullptr;
  std::optional<bool> another_kind;  ///< whether another kind follows, where it matters
  Phases phases = 0;
  std::vector<Link> links;
  int rows = 0;
};

bool SameEnd(const Line& one, const Line& other) {
  return one.fault == other.fault && one.ending == other.ending && one.another_kind == other.another_kind;
}

/// Whether rows of the same fault at the same phase end otherwise when another kind follows, or none.
std::optional<bool> WhatFollows(const Row& row, const std::vector<Row>& rows) {
  const bool matters = std::any_of(rows.begin(), rows.end(), [&](const Row& other) {
    return other.command == row.command && other.fault == row.fault && other.phase == row.phase &&
           &EndingOf(other) != &EndingOf(row);
  });
  return matters ? std::optional(KindFollows(row)) : std::nullopt;
}

std::vector<Line> LinesOf(Command command, Link link) {
  std::vector<Line> lines;
  const std::vector<Row> rows = AllRows(link);
  for (const Row& row : rows) {
    if (row.command != command) continue;
    const Line of_row{row.fault, &EndingOf(row), WhatFollows(row, rows), Set(row.phase), {link}, 1};
    const auto line = std::find_if(lines.begin(), lines.end(), [&](const Line& one) { return SameEnd(one, of_row); });
    if (line == lines.end()) {
      lines.push_back(of_row);
    } else {
      line->phases |= of_row.phases;
      ++line->rows;
    }
  }
  return lines;
}

/// Adds a line; what is the same over another link becomes one with it.
void AddLine(std::vector<Line>& lines, const Line& line) {
  const auto same = std::find_if(lines.begin(), lines.end(),
                                 [&](const Line& one) { return SameEnd(one, line) && one.phases == line.phases; });
  if (same == lines.end()) {
    lines.push_back(line);
    return;
  }
  same->links.push_back(line.links.front());
  same->rows += line.rows;
}

/// The lines of all links in the order of the faults.
std::vector<Line> LinesOf(Command command) {
  std::vector<Line> lines;
  for (const Link link : AllLinks) {
    for (const Line& line : LinesOf(command, link))
      AddLine(lines, line);
  }
  std::stable_sort(lines.begin(), lines.end(), [](const Line& a, const Line& b) { return a.fault < b.fault; });
  return lines;
}

void AddPart(std::string& text, std::string_view part, std::string_view between) {
  if (part.empty()) return;
  if (!text.empty()) text += between;
  text += part;
}

std::string WhereText(const Line& line) {
  std::string text;
  for (int i = 0; i <= static_cast<int>(Phase::End); ++i) {
    const auto phase = static_cast<Phase>(i);
    if ((line.phases & Set(phase)) != 0) AddPart(text, PhaseName(phase), ", ");
  }
  if (line.another_kind) text += *line.another_kind ? "; another kind follows" : "; no kind follows";
  return text;
}

std::string LinksText(const Line& line) {
  if (line.links.size() == AllLinks.size()) return "all";
  std::string text;
  for (const Link link : line.links)
    AddPart(text, LinkName(link), ", ");
  return text;
}

std::string ShownText(const Ending& ending) {
  std::string text;
  for (const std::string_view message : ending.messages)
    AddPart(text, message, "<br>");
  if (ending.notice != nullptr) {
    constexpr std::string_view NameInFront = "(Waypoint)";
    AddPart(text, ending.notice(DataKind::Waypoint).substr(NameInFront.size()), "<br>");
  }
  AddPart(text, TerminalMessage(ending), "<br>");
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text.empty() ? "nothing" : text;
}

std::string TableRow(const Line& line, const Words& words) {
  const Ending& ending = *line.ending;
  std::string text = "| ";
  text += line.fault->text.empty() ? "none" : "`" + std::string(line.fault->text) + "`";
  text += " | " + WhereText(line) + " | " + LinksText(line);
  text += " | " + std::to_string(line.rows) + " | " + std::to_string(ending.exit_status) + " | " + ShownText(ending);
  for (const Held held : {ending.hit, ending.before, ending.after})
    text.append(" | ").append(Word(words, held));
  return text + " |\n";
}

std::string SectionOf(Command command) {
  const Words& words = CommandWords[static_cast<std::size_t>(command)];
  const std::vector<Line> lines = LinesOf(command);
  int rows = 0;
  std::string body;
  for (const Line& line : lines) {
    rows += line.rows;
    body += TableRow(line, words);
  }
  std::string text = "\n## " + std::string(words.title) + ": " + std::to_string(rows) + " rows\n\n";
  text.append("| fault | it hits | link | rows | exit | what is shown | ").append(words.hit_title);
  text += " | kinds before | kinds behind |\n|---|---|---|---|---|---|---|---|---|\n";
  return text + body;
}

}  // namespace

std::string ReliabilityDocument() {
  std::string document(Beginning);
  for (const Command command : {Command::Info, Command::Download, Command::Upload})
    document += SectionOf(command);
  return document + "\n" + std::to_string(RowsOverAllLinks().size()) + " rows in all.\n";
}

}  // namespace walrim
