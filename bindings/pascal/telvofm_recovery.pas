{ What has become of a receipt when something failed: what the printer is asked, and what follows from its answers. }
unit telvofm_recovery;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}

interface

uses
  telvofm_session;

type
  { Sold: nothing is to be sold again. Not sold: it can be sold again. Otherwise a person has to look at the paper. }
  TVerdict = (vdSold, vdNotSold, vdAskAPerson);

  { What has become of a receipt, and why in one sentence; Number if it is sold. }
  TRecovery = record
    Verdict: TVerdict;
    Sentence: string;
    Number: UnicodeString;
  end;

{ Asks the printer what has become of a receipt of this total that was begun behind the number before. If it is still open it is ended
  when the till has finished it and it is paid in full, and cancelled otherwise, as an empty one is whose end is refused. Raises nothing
  for what the printer does. TReceipt.Recover is this for its own receipt. }
function AskedRecovery(Session: TSession; const NumberBefore: UnicodeString; Total, Paid: Currency; IsFinished: Boolean): TRecovery;

{ A verdict with its sentence. }
function Recovered(Verdict: TVerdict; const Sentence: string; const Number: UnicodeString = ''): TRecovery;

{ The receipt of this number. }
function SoldAs(const Number: UnicodeString; Total: Currency): TRecovery;

{ "sold: ", "not sold: " or "ask a person: ", and the sentence. }
function RecoveryText(const Recovery: TRecovery): string;

implementation

uses
  SysUtils, telvofm_answers, telvofm_failures, telvofm_library, telvofm_texts;

function Recovered(Verdict: TVerdict; const Sentence: string; const Number: UnicodeString): TRecovery;
begin
  Result.Verdict := Verdict;
  Result.Sentence := Sentence;
  Result.Number := Number;
end;

function SoldAs(const Number: UnicodeString; Total: Currency): TRecovery;
begin
  Result := Recovered(vdSold, 'receipt ' + string(Number) + ', total ' + string(MoneyText(Total)), Number);
end;

function IsEndRefused(Session: TSession): Boolean;
begin
  Result := False;
  try
    Session.Start('paragonEnd');
    Session.Check(Functions.paragonEnd(Session.Device, 0, 0));
  except
    on ERefused do
      Result := True;
  end;
end;

{ Ends or cancels the receipt if it is open. Whether that worked, Judged sees. }
procedure Finish(Session: TSession; const NumberBefore: UnicodeString; Total, Paid: Currency; IsFinished: Boolean);
var
  Last: TAnswers;
  IsPaid: Boolean;
begin
  Last := WithLastNumber(Session, [Session.Questions.State]);
  if (Last.Number <> NumberBefore) or (Last.Others[0] = Session.Questions.Closed) then
    Exit;
  IsPaid := IsFinished and IsAmount(AnswerTo(Session, Session.Questions.Total), Total) and
    IsAmount(AnswerTo(Session, Session.Questions.Due), 0);
  try
    if not IsPaid or (IsEndRefused(Session) and (Total = 0) and (Paid = 0)) then
    begin
      Session.Start('destroyParagon');
      Session.Check(Functions.destroyParagon(Session.Device, 0, nil));
    end;
  except
    on ECall do
      Exit;
  end;
end;

function Judged(Session: TSession; const NumberBefore: UnicodeString; Total: Currency; IsFinished: Boolean): TRecovery;
var
  Last: TAnswers;
  Number, LastTotal: UnicodeString;
  IsClosed: Boolean;
  Open: string;
begin
  Last := WithLastNumber(Session, [Session.Questions.LastTotal, Session.Questions.State]);
  Number := Last.Number;
  LastTotal := Last.Others[0];
  IsClosed := Last.Others[1] = Session.Questions.Closed;
  if IsClosed and (Number = NumberBefore) then
    Exit(Recovered(vdNotSold, 'receipt ' + string(Number) + ' is still the last one, and none is open; it can be sold again'));
  if IsClosed and IsFinished and IsAmount(LastTotal, Total) then
    Exit(SoldAs(Number, Total));
  Open := '';
  if not IsClosed then
    Open := ', and one is open';
  Result := Recovered(vdAskAPerson, 'the printer''s last receipt is ' + string(Number) + ' with ' + string(LastTotal) + Open +
    '; the till sold ' + string(MoneyText(Total)) + ' after receipt ' + string(NumberBefore) + '; look at the paper before it is sold again');
end;

function AskedRecovery(Session: TSession; const NumberBefore: UnicodeString; Total, Paid: Currency; IsFinished: Boolean): TRecovery;
begin
  try
    Session.Reopen;
    Finish(Session, NumberBefore, Total, Paid, IsFinished);
    Result := Judged(Session, NumberBefore, Total, IsFinished);
  except
    on Failure: ECall do
      Result := Recovered(vdAskAPerson, 'the printer does not say what it has done; look at its paper before this receipt is sold again (' +
        ReasonOf(Failure) + ')');
  end;
end;

function RecoveryText(const Recovery: TRecovery): string;
const
  Words: array[TVerdict] of string = ('sold: ', 'not sold: ', 'ask a person: ');
begin
  Result := Words[Recovery.Verdict] + Recovery.Sentence;
end;

end.
