{ What the printer answers to the questions of a receipt, and which answers are believed: a line that damages a reply can leave a call
  with 0 and an empty text, and a connection that has shifted gives the answer of the call before. }
unit telvofm_answers;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}

interface

uses
  telvofm_session;

type
  { The number of the last receipt, and what else was asked. }
  TAnswers = record
    Number: UnicodeString;
    Others: array of UnicodeString;
  end;

{ One line of text. Raises EOutcomeUnknown for anything else, and as Session.Variable does. }
function AnswerTo(Session: TSession; const Question: UnicodeString): UnicodeString;

{ The number of the last receipt, and the answers to these questions. The number is asked for before and behind them; raises
  EOutcomeUnknown when it is not the same then. }
function WithLastNumber(Session: TSession; const Questions: array of UnicodeString): TAnswers;

implementation

uses
  telvofm_failures;

const
  Call = 'getVariableResultObject';

function AnswerTo(Session: TSession; const Question: UnicodeString): UnicodeString;
var
  Index: Integer;
  IsLine: Boolean;
begin
  Result := Session.Variable(Question);
  IsLine := Result <> '';
  for Index := 1 to Length(Result) do
    IsLine := IsLine and (Result[Index] >= ' ');
  if not IsLine then
    raise DoubtOf(Call, 'What the printer answers for ' + string(Question) + ' is not one line of text.');
end;

function WithLastNumber(Session: TSession; const Questions: array of UnicodeString): TAnswers;
var
  Index: Integer;
  Name, Again: UnicodeString;
begin
  Name := Session.Questions.LastReceipt;
  Result.Number := AnswerTo(Session, Name);
  SetLength(Result.Others, Length(Questions));
  for Index := 0 to High(Questions) do
    Result.Others[Index] := AnswerTo(Session, Questions[Index]);
  Again := AnswerTo(Session, Name);
  if Again <> Result.Number then
    raise DoubtOf(Call, 'The printer has two answers for ' + string(Name) + ': ' + string(Result.Number) + ' and ' + string(Again) + '.');
end;

end.
