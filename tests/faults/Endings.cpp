#include "faults/Endings.h"

#include <algorithm>

#include "app/Messages.h"
#include "cli/Messages.h"
#include "device/Messages.h"

namespace walrim {

namespace {

using device_messages::DataLoss;
using messages::BadAnswer;
using messages::BadData;
using messages::EndRefused;
using messages::LinkLost;
using messages::NotAcknowledged;

/// What is told where the port has gone; the demonstration receiver's is the only one of these tests.
constexpr std::string_view PortGone = "demoがありません．\nSerial Port [ demo ] は既に使われています";
std::string OneDamaged(DataKind kind) {
  return messages::DamagedRecords(kind, 1);
}
std::string OneRefused(DataKind kind) {
  return messages::RefusedRecords(kind, 1);
}

constexpr int ExitDone = 0;
constexpr int ExitRefused = 1;
constexpr int ExitNoReceiver = 3;

// ---- The ways to end

using enum Held;

constexpr Ending AllWhole{};
/// Nobody has answered the product request.
constexpr Ending NobodyThere{Outcome::NoReceiver, ExitNoReceiver, {}, {}, Identity::Silent, false, Old, Old, Old};
constexpr Ending NotIdentified{Outcome::NoReceiver, ExitNoReceiver, {}, {}, Identity::Unknown, false, Old, Old, Old};
constexpr Ending RefusesAll{Outcome::NoReceiver, ExitNoReceiver, {}, {}, Identity::Refusing, false, Old, Old, Old};
/// The receiver fell silent: before anything was changed, inside the records, behind them.
constexpr Ending Lost{Outcome::LinkLost, ExitNoReceiver, {LinkLost}, {}, Identity::Known, false, Whole, Old, Old};
constexpr Ending LostInside{
    Outcome::LinkLost, ExitNoReceiver, {LinkLost}, {}, Identity::Known, false, Whole, Empty, Old};
constexpr Ending LostBehind{
    Outcome::LinkLost, ExitNoReceiver, {LinkLost}, {}, Identity::Known, false, Whole, Whole, Old};
/// The port cannot be opened again.
constexpr Ending Gone{
    Outcome::LinkLost, ExitNoReceiver, {PortGone, LinkLost}, {}, Identity::Known, false, Whole, Old, Old};
constexpr Ending GoneBehind{
    Outcome::LinkLost, ExitNoReceiver, {PortGone, LinkLost}, {}, Identity::Known, false, Whole, Whole, Old};
/// The first packet was not acknowledged.
constexpr Ending NotTaken{
    Outcome::NoReceiver, ExitNoReceiver, {NotAcknowledged}, {}, Identity::Known, false, Whole, Old, Old};
constexpr Ending NotTakenBehind{
    Outcome::NoReceiver, ExitNoReceiver, {NotAcknowledged}, {}, Identity::Known, false, Whole, Whole, Old};
/// Another packet came where the number of records was due.
constexpr Ending BadNumber{Outcome::Refused, ExitRefused, {BadAnswer}, {}, Identity::Known, false, Whole, Empty, Old};
constexpr Ending BadNumberBehind{
    Outcome::Refused, ExitRefused, {BadAnswer}, {}, Identity::Known, false, Whole, Whole, Old};
constexpr Ending Nonsense{Outcome::Refused, ExitRefused, {BadData}, {}, Identity::Known, false, Whole, Empty, Old};
constexpr Ending Stalled{Outcome::Cancelled, ExitNoReceiver, {}, {}, Identity::Known, true, Whole, Empty, Old};
constexpr Ending EndedEarly{Outcome::Done, ExitDone, {DataLoss}, {}, Identity::Known, false, Whole, CutAndBlank, Whole};
constexpr Ending FirstPassedOver{Outcome::Done, ExitDone, {DataLoss},   {},   Identity::Known,
                                 false,         Whole,    FirstMissing, Whole};
constexpr Ending MoreThanAnnounced{Outcome::Done, ExitDone, {DataLoss}, {}, Identity::Known, false, Whole, Cut, Whole};
constexpr Ending NoneAnnounced{Outcome::Done, ExitDone, {}, {}, Identity::Known, false, Whole, Old, Whole};
constexpr Ending FewerShown{Outcome::Done, ExitDone, {}, {}, Identity::Known, false, Whole, Cut, Whole};
constexpr Ending TakenDamaged{Outcome::Done, ExitDone, {}, OneDamaged};
constexpr Ending RecordRefused{Outcome::Refused, ExitRefused, {}, OneRefused, Identity::Known, false, Whole,
                               AllButOne,        Whole};
constexpr Ending RecordNeverTaken{
    Outcome::NoReceiver, ExitNoReceiver, {NotAcknowledged}, {}, Identity::Known, false, Whole, Old, Old};
/// The receiver has taken a record, but its ACK cannot be read.
constexpr Ending AckSpoilt{Outcome::Refused, ExitRefused, {}, OneRefused};
/// The receiver has not taken the end of the records, and keeps what it had.
constexpr Ending NotClosed{Outcome::Refused, ExitRefused, {}, EndRefused, Identity::Known, false, Whole, Old, Whole};
/// It has, but its ACK cannot be read.
constexpr Ending EndAckSpoilt{Outcome::Refused, ExitRefused, {}, EndRefused};

// ---- The rules

constexpr unsigned Info = 1;
constexpr unsigned Download = 2;
constexpr unsigned Upload = 4;
constexpr unsigned Every = Info | Download | Upload;
constexpr unsigned Plain = 1;
constexpr unsigned Checked = 2;
constexpr unsigned Automatic = 4;
constexpr unsigned All = Plain | Checked | Automatic;
/// The product request goes over the plain link, what is behind it over the checked one.
constexpr unsigned PlainAsked = Plain | Automatic;
constexpr unsigned CheckedThen = Checked | Automatic;

constexpr Phases Always = Set(Phase::Throughout);
constexpr Phases Records = Phase::First | Phase::Middle | Phase::Last;
constexpr Phases Identification = Phase::Request | Phase::Product;
constexpr Phases EveryAnswer = ~Always;
constexpr Phases BehindIdentification = EveryAnswer & ~Identification;

/// Whether it matters that another kind is to follow.
enum class Then { Any, NoKind, AnotherKind };

struct Rule {
  unsigned commands;
  unsigned links;
  std::string_view fault;
  Phases phases;
  Then then;
  const Ending* ending;
};

constexpr auto Any = Then::Any;
constexpr auto NoKind = Then::NoKind;
constexpr auto AnotherKind = Then::AnotherKind;

constexpr Rule Rules[] = {
    {Every, All, "", Always, Any, &AllWhole},
    {Every, All, "silent", Always, Any, &NobodyThere},

    {Every, All, "silent-after=N", Identification, Any, &NobodyThere},
    {Every, All, "silent-after=N", Set(Phase::Opening), Any, &Lost},
    {Info, All, "silent-after=N", Set(Phase::Number), Any, &Lost},
    {Download, All, "silent-after=N", Records | Phase::Number, Any, &LostInside},
    // What stands behind the last record is not needed, but the next kind is asked for in vain.
    {Download, All, "silent-after=N", Phase::Close | Phase::End, NoKind, &AllWhole},
    {Download, All, "silent-after=N", Phase::Close | Phase::End, AnotherKind, &LostBehind},
    {Upload, All, "silent-after=N", Records, Any, &Lost},
    {Upload, All, "silent-after=N", Phase::NewOpening | Phase::NewNumber, Any, &LostBehind},
    // The receiver hears the end of the records, although its ACK does not come back.
    {Upload, All, "silent-after=N", Set(Phase::Close), Any, &LostBehind},
    {Info | Upload, All, "silent-after=N", Set(Phase::End), NoKind, &AllWhole},
    {Info | Upload, All, "silent-after=N", Set(Phase::End), AnotherKind, &LostBehind},

    {Every, All, "unplug-after=N", Set(Phase::Product), Any, &NobodyThere},
    {Every, All, "unplug-after=N", Set(Phase::Opening), Any, &Gone},
    {Info, All, "unplug-after=N", Set(Phase::Number), Any, &Lost},
    {Download, All, "unplug-after=N", Records | Phase::Number, Any, &LostInside},
    {Download, All, "unplug-after=N", Set(Phase::Close), NoKind, &AllWhole},
    {Download, All, "unplug-after=N", Set(Phase::Close), AnotherKind, &GoneBehind},
    {Upload, All, "unplug-after=N", Records, Any, &Lost},
    // The end of the records does not reach the receiver any more; the port is missed when the new number is asked for.
    {Upload, All, "unplug-after=N", Set(Phase::Close), Any, &Gone},
    {Upload, All, "unplug-after=N", Set(Phase::NewOpening), Any, &GoneBehind},
    {Upload, All, "unplug-after=N", Set(Phase::NewNumber), Any, &LostBehind},
    {Every, All, "unplug-after=N", Set(Phase::End), NoKind, &AllWhole},
    {Every, All, "unplug-after=N", Set(Phase::End), AnotherKind, &GoneBehind},

    {Download, All, "early-complete=N", Records, Any, &EndedEarly},
    {Download, Plain, "unknown-first", Set(Phase::First), Any, &Stalled},
    {Download, CheckedThen, "unknown-first", Set(Phase::First), Any, &FirstPassedOver},

    {Info, All, "short-count=1", Set(Phase::Number), Any, &FewerShown},
    {Info, All, "short-count=1000", Set(Phase::Number), Any, &FewerShown},
    {Download, All, "short-count=1", Set(Phase::Number), Any, &MoreThanAnnounced},
    {Download, All, "short-count=N", Set(Phase::Number), Any, &MoreThanAnnounced},
    {Download, All, "short-count=1000", Set(Phase::Number), Any, &NoneAnnounced},
    {Upload, All, "short-count=1", Set(Phase::NewNumber), Any, &AllWhole},
    {Upload, All, "short-count=1000", Set(Phase::NewNumber), Any, &AllWhole},

    {Every, All, "gap=200", Always, Any, &AllWhole},
    {Every, All, "gap=1400", Always, Any, &AllWhole},
    {Every, All, "gap=1600", Always, Any, &NobodyThere},
    {Every, All, "dribble=40", Always, Any, &AllWhole},
    // An answer that takes longer than ten seconds is none, although bytes come.
    {Every, All, "dribble=200", Always, Any, &NotIdentified},
    {Every, All, "dribble=1000", Always, Any, &NotIdentified},
    {Every, PlainAsked, "dribble=1600", Always, Any, &NobodyThere},
    {Every, Checked, "dribble=1600", Always, Any, &NotIdentified},

    {Every, PlainAsked, "garbage", Always, Any, &NotIdentified},
    // The request is repeated once.
    {Every, PlainAsked, "garbage=N", Identification, Any, &AllWhole},
    {Every, Plain, "garbage=N", Set(Phase::Opening), Any, &NotTaken},
    {Info | Download, Plain, "garbage=N", Set(Phase::Number), Any, &BadNumber},
    {Download, Plain, "garbage=N", Records, Any, &Stalled},
    {Download, Plain, "garbage=N", Set(Phase::Close), Any, &AllWhole},
    {Upload, Plain, "garbage=N", Records, Any, &AckSpoilt},
    {Upload, Plain, "garbage=N", Set(Phase::Close), Any, &EndAckSpoilt},
    {Upload, Plain, "garbage=N", Set(Phase::NewOpening), Any, &NotTakenBehind},
    {Upload, Plain, "garbage=N", Set(Phase::NewNumber), Any, &BadNumberBehind},
    {Every, Plain, "garbage=N", Set(Phase::End), Any, &AllWhole},

    {Download, Plain, "overlong=N", Records, Any, &Nonsense},
    {Download, All, "burst=5", Set(Phase::First), Any, &AllWhole},
    {Download, All, "burst=6", Set(Phase::First), Any, &Nonsense},
    {Download, Plain, "bad-checksum=N", Records, Any, &TakenDamaged},

    // On a checked link what was damaged is asked for again, and noise is passed over.
    {Every, Checked, "garbage", Always, Any, &AllWhole},
    {Every, Checked, "garbage=N", Identification, Any, &AllWhole},
    {Every, CheckedThen, "garbage=N", BehindIdentification, Any, &AllWhole},
    {Download, CheckedThen, "overlong=N", Records, Any, &AllWhole},
    {Download, CheckedThen, "bad-checksum=N", Records, Any, &AllWhole},

    // A plain link looks for an ACK's id alone; a checked one asks for it again, or goes by the answer behind it.
    {Every, All, "bad-ack=N", EveryAnswer, Any, &AllWhole},

    {Every, PlainAsked, "nak", Always, Any, &NotIdentified},
    {Every, PlainAsked, "nak=N", Set(Phase::Request), Any, &AllWhole},
    {Every, Plain, "nak=N", Set(Phase::Opening), Any, &NotTaken},
    {Upload, Plain, "nak=N", Records, Any, &RecordRefused},
    {Upload, Plain, "nak=N", Set(Phase::Close), Any, &NotClosed},
    {Upload, Plain, "nak=N", Set(Phase::NewOpening), Any, &NotTakenBehind},
    {Every, Plain, "nak=N", Set(Phase::End), Any, &AllWhole},
    // A checked link sends again what was not taken, three times in all.
    {Every, Checked, "nak", Always, Any, &RefusesAll},
    {Every, Checked, "nak=N", Set(Phase::Request), Any, &AllWhole},
    {Every, CheckedThen, "nak=N", BehindIdentification, Any, &AllWhole},
    {Every, PlainAsked, "refuse=N", Set(Phase::Request), Any, &NotIdentified},
    {Every, Checked, "refuse=N", Set(Phase::Request), Any, &RefusesAll},
    {Every, All, "refuse=N", Set(Phase::Opening), Any, &NotTaken},
    {Upload, Plain, "refuse=N", Records, Any, &RecordRefused},
    {Upload, CheckedThen, "refuse=N", Records, Any, &RecordNeverTaken},
    {Upload, All, "refuse=N", Set(Phase::Close), Any, &NotClosed},
    {Upload, All, "refuse=N", Set(Phase::NewOpening), Any, &NotTakenBehind},
    {Every, All, "refuse=N", Set(Phase::End), Any, &AllWhole},

    // The manners of real receivers.
    {Every, All, "pvt=1", Always, Any, &AllWhole},
    {Every, All, "pvt=4", Always, Any, &AllWhole},
    {Every, All, "short-ack", Always, Any, &AllWhole},
    {Every, All, "empty-ack", Always, Any, &AllWhole},
    {Every, All, "late-ack=1000", Always, Any, &AllWhole},
    {Every, All, "late-ack=1400", Always, Any, &AllWhole},
    {Every, All, "other-ack", Always, Any, &AllWhole},
    {Every, All, "other-ack=N", EveryAnswer, Any, &AllWhole},
    {Every, All, "two-acks=500", Always, Any, &AllWhole},
    {Every, All, "two-acks=1400", Always, Any, &AllWhole},
    {Info | Download, All, "two-acks=3000", Always, Any, &AllWhole},
    // Nothing else comes before the second ACK: the new number is asked for in vain.
    {Upload, All, "two-acks=3000", Always, Any, &LostBehind},
    {Every, All, "ack-once", Always, Any, &AllWhole},
    {Every, All, "repeat=1000", Always, Any, &AllWhole},
    {Every, All, "repeat=100", Always, Any, &AllWhole},
    {Every, All, "product-frames=4", Always, Any, &AllWhole},
    {Every, All, "product-frames=20", Always, Any, &AllWhole},
    {Every, All, "product-texts=1", Always, Any, &AllWhole},
    {Every, All, "product-texts=3", Always, Any, &AllWhole},
};

bool Matches(const Rule& rule, const Row& row) {
  const unsigned command = 1U << static_cast<unsigned>(row.command);
  const unsigned link = 1U << static_cast<unsigned>(row.link);
  const bool then = rule.then == Then::Any || KindFollows(row) == (rule.then == Then::AnotherKind);
  return (rule.commands & command) != 0 && (rule.links & link) != 0 && rule.fault == row.fault->text &&
         (rule.phases & Set(row.phase)) != 0 && then;
}

std::vector<DataKind> SelectedKinds(const Row& row) {
  std::vector<DataKind> kinds;
  for (const DataKind kind : AllDataKinds) {
    if (Selected(row, kind)) kinds.push_back(kind);
  }
  return kinds;
}

}  // namespace

std::vector<std::size_t> RulesOf(const Row& row) {
  std::vector<std::size_t> numbers;
  for (std::size_t i = 0; i < RuleCount(); ++i) {
    if (Matches(Rules[i], row)) numbers.push_back(i);
  }
  return numbers;
}

std::size_t RuleCount() {
  return std::size(Rules);
}

const Ending& EndingOf(const Row& row) {
  return *Rules[RulesOf(row).at(0)].ending;
}

std::vector<DataKind> HitKinds(const Row& row, const Ending& ending) {
  if (row.struck) return {*row.struck};
  std::vector<DataKind> kinds = SelectedKinds(row);
  // What ends the command is met in the first kind.
  if (ending.outcome != Outcome::Done) kinds.resize(1);
  return kinds;
}

std::vector<DataKind> KindsReached(const Row& row, const Ending& ending) {
  std::vector<DataKind> kinds = SelectedKinds(row);
  if (ending.identity != Identity::Known) return {};
  if (ending.outcome == Outcome::Done || ending.after == Whole) return kinds;
  const auto hit = std::find(kinds.begin(), kinds.end(), HitKinds(row, ending).front());
  // A kind that a download has brought whole is not where the command ended.
  const bool next_too = row.command == Command::Download && ending.hit == Whole;
  kinds.erase(std::min(hit + (next_too ? 2 : 1), kinds.end()), kinds.end());
  return kinds;
}

bool NewNumberKnown(const Row& row, const Ending& ending, DataKind kind) {
  const std::vector<DataKind> hit = HitKinds(row, ending);
  const bool is_hit = std::find(hit.begin(), hit.end(), kind) != hit.end();
  return !is_hit || ending.after == Whole;
}

Held HeldAfter(const Row& row, const Ending& ending, DataKind kind) {
  if (!Selected(row, kind)) return Old;
  const std::vector<DataKind> hit = HitKinds(row, ending);
  if (std::find(hit.begin(), hit.end(), kind) != hit.end()) return ending.hit;
  return kind < hit.front() ? ending.before : ending.after;
}

std::vector<std::string> MessagesOf(const Row& row, const Ending& ending) {
  std::vector<std::string> messages;
  const std::size_t times = ending.outcome == Outcome::Done ? HitKinds(row, ending).size() : 1;
  for (std::size_t i = 0; i < times; ++i) {
    for (const std::string_view message : ending.messages) {
      if (!message.empty()) messages.emplace_back(message);
    }
  }
  return messages;
}

namespace {

/// How many records of the kinds that were hit never came.
std::string MissingNotices(const Row& row, const Ending& ending) {
  std::string notices;
  for (const DataKind kind : HitKinds(row, ending)) {
    const int count = static_cast<int>(MovedRecords(row, kind).size());
    const int missing = ending.hit == FirstMissing ? 1 : count - RecordsBeforeFault(row, count);
    notices += messages::MissingRecords(kind, count, missing);
  }
  return notices;
}

}  // namespace

std::string StatusOf(const Row& row, const Ending& ending) {
  std::string status;
  if (ending.hit == CutAndBlank || ending.hit == FirstMissing) return MissingNotices(row, ending);
  if (ending.notice == nullptr) return status;
  for (const DataKind kind : HitKinds(row, ending))
    status += ending.notice(kind);
  return status;
}

std::string_view TerminalMessage(const Ending& ending) {
  if (ending.stalled) return cli_messages::Stalled;
  if (ending.identity == Identity::Silent) return device_messages::SilentReceiver;
  if (ending.identity == Identity::Refusing) return NotAcknowledged;
  return ending.identity == Identity::Unknown ? messages::NotIdentified : std::string_view{};
}

int RecordsBeforeFault(const Row& row, int count) {
  if (row.fault->text == "short-count=1") return count - 1;
  if (row.fault->text == "short-count=1000") return 0;
  if (row.fault->counts == Counts::HalfOfRecords) return count - count / 2;
  return RecordNumber(row.phase, count) - 1;
}

}  // namespace walrim
