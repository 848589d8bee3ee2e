#include "preflight/Messages.h"

#include <string_view>

#include "preflight/Sending.h"
#include "text/Phrase.h"
#include "text/Utf8.h"

namespace walrim::preflight_messages {

namespace {

std::string Quoted(std::string_view text) {
  return Phrase("「%1」", WithoutControlCharacters(text));
}

std::string Became(std::string_view what, const Difference& difference) {
  return Phrase("%1%2→%3", Phrase(what), Quoted(difference.was), Quoted(difference.is));
}

std::string Once(std::string_view what, const Difference& difference) {
  return Phrase("%1（%2件）", Phrase(what), difference.count);
}

std::string NameOf(const DataSet& data, const Difference& difference) {
  switch (difference.kind) {
    case DataKind::Waypoint:
      return Bare(data.Waypoints()[difference.record].ident);
    case DataKind::Route: {
      const Route& route = data.Routes()[difference.record];
      return Bare(difference.point ? route.points[*difference.point].waypoint.ident : route.cmnt);
    }
    case DataKind::TrackLog:
      break;
  }
  return data.Logs()[difference.record].trk_ident;
}

std::string OneProposal(const Proposal& proposal) {
  switch (proposal.change) {
    case Change::Rename:
    case Change::NameRoute:
      return Phrase("名前%1", Quoted(proposal.text));
    case Change::Number:
      return Phrase("番号%1", proposal.number);
    case Change::Split:
      return Phrase("%1点ずつに分ける", proposal.number);
    case Change::Shorten:
      return Phrase("トラックログを短くする");
    case Change::Clean:
      break;
  }
  return Phrase("送れない文字と長すぎる文字列を除く");
}

std::string Other(const UploadFinding& finding) {
  if (!finding.other) return {};
  return Phrase("%1 %2", DataKindName(finding.difference.kind), *finding.other + 1);
}

}  // namespace

std::string RecordText(const DataSet& data, const Difference& difference) {
  std::string text(DataKindName(difference.kind));
  if (ToldOnce(difference.loss)) return text;
  const int first = difference.kind == DataKind::TrackLog ? data.FirstLogNumber() : 1;
  text += " " + std::to_string(difference.record + static_cast<std::size_t>(first));
  if (difference.point) text += " Point " + std::to_string(*difference.point + 1);
  const std::string name = NameOf(data, difference);
  return name.empty() ? text : text + Quoted(name);
}

std::string LossText(const Difference& difference) {
  switch (difference.loss) {
    case Loss::Missing:
      return Phrase("受信機に残りません");
    case Loss::Points:
      return Phrase("%1点のうち%2点だけが残ります", difference.was, difference.is);
    case Loss::Name:
      return Became("名前", difference);
    case Loss::Comment:
      return Became("コメント", difference);
    case Loss::Picture:
      return Became("絵", difference);
    case Loss::Number:
      return Became("番号", difference);
    case Loss::Overwrites:
      return Phrase("受信機にある%1を上書きします", Quoted(difference.is));
    case Loss::SharedName:
      return Phrase("ほかの場所と同じ名前です");
    case Loss::SharedRouteName:
      return Phrase("ほかのルートと同じ名前です");
    case Loss::NoRouteName:
      return Phrase("名前がありません");
    case Loss::Capitals:
      return Once("小文字が大文字になります", difference);
    case Loss::Colour:
      return Once("色が残りません", difference);
    case Loss::Height:
      return Once("標高が残りません", difference);
    case Loss::Depth:
      return Once("水深が残りません", difference);
    case Loss::Distance:
      return Once("近接警報の距離が残りません", difference);
    case Loss::Details:
      return Once("施設や住所が残りません", difference);
    case Loss::LogName:
      return Once("名前が残りません", difference);
    case Loss::Time:
      return Once("日時が残りません", difference);
  }
  return {};
}

std::string FindingText(const UploadFinding& finding) {
  const std::string lost = LossText(finding.difference);
  switch (finding.cause) {
    case Cause::Type:
      return lost;
    case Cause::Letters:
      return Phrase("名前に受信機の文字がないため，%1", lost);
    case Cause::Overwritten:
      return Phrase("%1と同じ名前か番号になるため，%2", Other(finding), lost);
    case Cause::NoRoom:
      return Phrase("受信機に入りきらないため，%1", lost);
    case Cause::TooLong:
      return finding.other ? Phrase("%1の文字列が長すぎて受信機が受け取らないため，%2", Other(finding), lost)
                           : Phrase("文字列が長すぎて受信機が受け取らないため，%1", lost);
    case Cause::NotSendable:
      return finding.other ? Phrase("%1に送れない文字か位置があるため，%2", Other(finding), lost)
                           : Phrase("送れない文字か位置があるため，%1", lost);
  }
  return lost;
}

std::string ProposalText(const UploadFinding& finding) {
  std::string text;
  for (const Proposal& proposal : finding.proposals) {
    const std::string one = OneProposal(proposal);
    if (text.find(one) == std::string::npos) text += (text.empty() ? "" : Phrase("，")) + one;
  }
  return text;
}

std::string FindingLine(const DataSet& data, const UploadFinding& finding) {
  const std::string proposal = ProposalText(finding);
  const std::string line = Phrase("%1：%2", RecordText(data, finding.difference), FindingText(finding));
  return proposal.empty() ? line : Phrase("%1（提案：%2）", line, proposal);
}

std::string DifferenceLine(const DataSet& data, const Difference& difference) {
  return Phrase("%1：%2", RecordText(data, difference), LossText(difference));
}

}  // namespace walrim::preflight_messages
