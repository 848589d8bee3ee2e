#include "preflight/Messages.h"

#include <initializer_list>
#include <string_view>

#include "preflight/Sending.h"
#include "text/Utf8.h"

namespace walrim::preflight_messages {

namespace {

std::string Joined(std::initializer_list<std::string_view> parts) {
  std::string text;
  for (const std::string_view part : parts)
    text += part;
  return text;
}

std::string Quoted(std::string_view text) {
  return Joined({"「", WithoutControlCharacters(text), "」"});
}

std::string Became(std::string_view what, const Difference& difference) {
  return Joined({what, Quoted(difference.was), "→", Quoted(difference.is)});
}

std::string Once(std::string_view what, const Difference& difference) {
  return Joined({what, "（", std::to_string(difference.count), "件）"});
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
      return Joined({"名前", Quoted(proposal.text)});
    case Change::Number:
      return "番号" + std::to_string(proposal.number);
    case Change::Split:
      return std::to_string(proposal.number) + "点ずつに分ける";
    case Change::Shorten:
      return "トラックログを短くする";
    case Change::Clean:
      break;
  }
  return "送れない文字と長すぎる文字列を除く";
}

std::string Other(const UploadFinding& finding) {
  if (!finding.other) return {};
  return Joined({DataKindName(finding.difference.kind), " ", std::to_string(*finding.other + 1)});
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
      return "受信機に残りません";
    case Loss::Points:
      return Joined({difference.was, "点のうち", difference.is, "点だけが残ります"});
    case Loss::Name:
      return Became("名前", difference);
    case Loss::Comment:
      return Became("コメント", difference);
    case Loss::Picture:
      return Became("絵", difference);
    case Loss::Number:
      return Became("番号", difference);
    case Loss::Overwrites:
      return Joined({"受信機にある", Quoted(difference.is), "を上書きします"});
    case Loss::SharedName:
      return "ほかの場所と同じ名前です";
    case Loss::SharedRouteName:
      return "ほかのルートと同じ名前です";
    case Loss::NoRouteName:
      return "名前がありません";
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
      return "名前に受信機の文字がないため，" + lost;
    case Cause::Overwritten:
      return Joined({Other(finding), "と同じ名前か番号になるため，", lost});
    case Cause::NoRoom:
      return "受信機に入りきらないため，" + lost;
    case Cause::TooLong:
      return Joined({Other(finding), finding.other ? "の" : "", "文字列が長すぎて受信機が受け取らないため，", lost});
    case Cause::NotSendable:
      return Joined({Other(finding), finding.other ? "に" : "", "送れない文字か位置があるため，", lost});
  }
  return lost;
}

std::string ProposalText(const UploadFinding& finding) {
  std::string text;
  for (const Proposal& proposal : finding.proposals) {
    const std::string one = OneProposal(proposal);
    if (text.find(one) == std::string::npos) text += (text.empty() ? "" : "，") + one;
  }
  return text;
}

std::string FindingLine(const DataSet& data, const UploadFinding& finding) {
  const std::string proposal = ProposalText(finding);
  return Joined({RecordText(data, finding.difference), "：", FindingText(finding), proposal.empty() ? "" : "（提案：",
                 proposal, proposal.empty() ? "" : "）"});
}

std::string DifferenceLine(const DataSet& data, const Difference& difference) {
  return Joined({RecordText(data, difference), "：", LossText(difference)});
}

}  // namespace walrim::preflight_messages
