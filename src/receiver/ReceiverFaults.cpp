#include "receiver/ReceiverFaults.h"

#include <algorithm>
#include <charconv>

namespace walrim {

namespace {

enum class Number { None, Optional, Required };

struct FaultRow {
  std::string_view kind;
  std::optional<int> ReceiverFaults::*field;
  Number number;
  int without;  // the value where no number is given
  int least;
  int most;
};

constexpr int MostCount = 1'000'000;
constexpr int MostMilliseconds = 600'000;
constexpr int MostLateMilliseconds = 3000;
constexpr int MostBurst = 100;
constexpr int MostProductFrames = 100;

constexpr FaultRow FaultRows[] = {
    {"silent", &ReceiverFaults::silent, Number::None, 0, 0, 0},
    {"silent-after", &ReceiverFaults::silent_after, Number::Required, 0, 0, MostCount},
    {"early-complete", &ReceiverFaults::early_complete, Number::Required, 0, 0, MostCount},
    {"unknown-first", &ReceiverFaults::unknown_first, Number::None, 0, 0, 0},
    {"short-count", &ReceiverFaults::short_count, Number::Required, 0, 0, MostCount},
    {"gap", &ReceiverFaults::gap, Number::Required, 0, 0, MostMilliseconds},
    {"dribble", &ReceiverFaults::dribble, Number::Required, 0, 0, MostMilliseconds},
    {"garbage", &ReceiverFaults::garbage, Number::Optional, 0, 1, MostCount},
    {"overlong", &ReceiverFaults::overlong, Number::Optional, 1, 1, MostCount},
    {"burst", &ReceiverFaults::burst, Number::Required, 0, 2, MostBurst},
    {"bad-checksum", &ReceiverFaults::bad_checksum, Number::Required, 0, 1, MostCount},
    {"bad-ack", &ReceiverFaults::bad_ack, Number::Required, 0, 1, MostCount},
    {"unplug-after", &ReceiverFaults::unplug_after, Number::Required, 0, 1, MostCount},
    {"nak", &ReceiverFaults::nak, Number::Optional, 0, 1, MostCount},
    {"refuse", &ReceiverFaults::refuse, Number::Required, 0, 1, MostCount},
    {"short-ack", &ReceiverFaults::short_ack, Number::None, 0, 0, 0},
    {"empty-ack", &ReceiverFaults::empty_ack, Number::None, 0, 0, 0},
    {"late-ack", &ReceiverFaults::late_ack, Number::Required, 0, 0, MostLateMilliseconds},
    {"other-ack", &ReceiverFaults::other_ack, Number::Optional, 0, 1, MostCount},
    {"two-acks", &ReceiverFaults::two_acks, Number::Optional, 500, 0, MostLateMilliseconds},
    {"ack-once", &ReceiverFaults::ack_once, Number::None, 0, 0, 0},
    {"repeat", &ReceiverFaults::repeat, Number::Optional, 1000, 1, MostMilliseconds},
    {"pvt", &ReceiverFaults::pvt, Number::Optional, 1, 1, 4},
    {"product-frames", &ReceiverFaults::product_frames, Number::Optional, 4, 1, MostProductFrames},
    {"product-texts", &ReceiverFaults::product_texts, Number::Required, 0, 1, 3},
    {"links-between", &ReceiverFaults::links_between, Number::None, 0, 0, 0},
    {"two-segments", &ReceiverFaults::two_segments, Number::None, 0, 0, 0},
};

std::string Form(const FaultRow& row) {
  const std::string kind(row.kind);
  if (row.number == Number::None) return kind;
  return row.number == Number::Optional ? kind + "[=N]" : kind + "=N";
}

std::optional<int> WholeNumber(std::string_view text) {
  int value = 0;
  const char* end = text.data() + text.size();
  const auto [stop, problem] = std::from_chars(text.data(), end, value);
  if (problem != std::errc() || stop != end) return std::nullopt;
  return value;
}

std::string Quoted(std::string_view text) {
  return "\"" + std::string(text) + "\"";
}

std::string AddNumber(ReceiverFaults& faults, const FaultRow& row, std::string_view number) {
  if (row.number == Number::None) return "the fault " + Quoted(row.kind) + " takes no number";
  const std::optional<int> value = WholeNumber(number);
  if (!value || *value < row.least || *value > row.most) {
    return "the fault " + Quoted(row.kind) + " takes a whole number from " + std::to_string(row.least) + " to " +
           std::to_string(row.most) + ", not " + Quoted(number);
  }
  faults.*row.field = value;
  return {};
}

}  // namespace

std::string AddFault(ReceiverFaults& faults, std::string_view text) {
  const std::size_t equals = text.find('=');
  const std::string_view kind = text.substr(0, equals);
  const auto* row = std::find_if(std::begin(FaultRows), std::end(FaultRows),
                                 [kind](const FaultRow& candidate) { return candidate.kind == kind; });
  if (row == std::end(FaultRows)) {
    std::string message = "there is no fault " + Quoted(kind) + "; the faults are";
    for (const std::string& form : FaultForms())
      message += " " + form;
    return message;
  }
  if (equals != std::string_view::npos) return AddNumber(faults, *row, text.substr(equals + 1));
  if (row->number == Number::Required) return "the fault " + Quoted(kind) + " needs a number: " + Form(*row);
  faults.*row->field = row->without;
  return {};
}

std::vector<std::string> FaultForms() {
  std::vector<std::string> forms;
  for (const FaultRow& row : FaultRows)
    forms.push_back(Form(row));
  return forms;
}

}  // namespace walrim
