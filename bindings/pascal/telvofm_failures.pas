{ What can go wrong, as exceptions that say whether the printer has carried the command out. }
unit telvofm_failures;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}

interface

uses
  SysUtils, telvofm_codes;

type
  { Whatever goes wrong here; the message says what to do. }
  ETelvofm = class(Exception);

  { The library is missing, is another one, or does not fit this program. }
  ELibrary = class(ETelvofm);

  { An amount that cannot be sent as it is. Nothing was sent. }
  EAmount = class(ETelvofm);

  { A text that cannot be sent as it is. Nothing was sent. }
  EText = class(ETelvofm)
  private
    FPosition: Integer;
  public
    { With a sentence that names the character. }
    constructor Create(const Sentence: string; Position: Integer);
    { Where in the text the character is, counted from 0. }
    property Position: Integer read FPosition;
  end;

  { A call that did not succeed. }
  ECall = class(ETelvofm)
  private
    FCall, FName, FHappened, FAdvice: string;
    FCode: Integer;
    FExecuted: TExecuted;
  public
    { With all of it; the message is made of them. }
    constructor Create(const Call: string; Code: Integer; const Name, Happened: string; Executed: TExecuted; const Advice: string);
    { The function of telvofm.h. }
    property Call: string read FCall;
    { What it returned. }
    property Code: Integer read FCode;
    { The code's name. }
    property Name: string read FName;
    { What that means, in one sentence. }
    property Happened: string read FHappened;
    { Whether the printer has carried the command out. }
    property Executed: TExecuted read FExecuted;
    { What to do, in one sentence. }
    property Advice: string read FAdvice;
  end;

  { The printer understood the call and refused it. }
  ERefused = class(ECall);

  { Nothing reached the printer: none is open, the session is closed, or the receipt is not open. }
  ENotExecuted = class(ECall);

  { The printer may have carried the command out, or not, or twice. }
  EOutcomeUnknown = class(ECall);

{ What a call failed with that was answered in time, or slowly: then the printer may have refused what it had done already. }
function FailureOf(const Call: string; Code: Integer; IsSlow: Boolean): ECall;

{ Of a call on a session that is closed. }
function ClosedFailure(const Call: string): ENotExecuted;

{ Of a call on a receipt that is none of the printer's now. }
function NotOursFailure(const Call: string): ENotExecuted;

{ Of what would go into another receipt than the one that it is called on. }
function NotBegunFailure(const Call: string): ENotExecuted;

{ Of a second begin of a receipt that is open. }
function AlreadyBegunFailure(const Call: string): ENotExecuted;

{ Of a begin while a receipt is open that is not this one. }
function AnotherOpenFailure(const Call: string): ENotExecuted;

{ Of a question that was not answered, for a sentence: what failed, or that the answer is none. }
function ReasonOf(Question: ECall): string;

{ Of a begin when the printer does not say whether a receipt is open. }
function UnansweredFailure(const Call: string; Question: ECall): ENotExecuted;

{ After a call that returned 0 and left the printer with other totals than it should. }
function DoubtOf(const Call, Happened: string): EOutcomeUnknown;

{ The same once more, because an exception that is raised is freed by whoever catches it. }
function RepeatedFailure(Failure: EOutcomeUnknown): EOutcomeUnknown;

implementation

constructor EText.Create(const Sentence: string; Position: Integer);
begin
  inherited Create(Sentence);
  FPosition := Position;
end;

constructor ECall.Create(const Call: string; Code: Integer; const Name, Happened: string; Executed: TExecuted; const Advice: string);
const
  Sentences: array[TExecuted] of string =
    ('It was carried out.', 'It was not carried out.', 'Whether it was carried out is unknown.');
begin
  inherited Create(Call + ': code ' + IntToStr(Code) + ' (' + Name + '): ' + Happened + ' ' + Sentences[Executed] + ' ' + Advice);
  FCall := Call;
  FCode := Code;
  FName := Name;
  FHappened := Happened;
  FExecuted := Executed;
  FAdvice := Advice;
end;

function FailureOf(const Call: string; Code: Integer; IsSlow: Boolean): ECall;
var
  Index: Integer;
  Meaning: TCodeMeaning;
begin
  for Index := Low(CodeMeanings) to High(CodeMeanings) do
  begin
    Meaning := CodeMeanings[Index];
    if (Meaning.First <= Code) and (Code <= Meaning.Last) then
    begin
      if (Meaning.Executed <> exNo) or (IsSlow and (Code > 0)) then
        Result := EOutcomeUnknown.Create(Call, Code, string(Meaning.Name), string(Meaning.Happened), exUnknown, string(Meaning.Advice))
      else if Code > 0 then
        Result := ERefused.Create(Call, Code, string(Meaning.Name), string(Meaning.Happened), exNo, string(Meaning.Advice))
      else
        Result := ENotExecuted.Create(Call, Code, string(Meaning.Name), string(Meaning.Happened), exNo, string(Meaning.Advice));
      Exit;
    end;
  end;
  Result := EOutcomeUnknown.Create(Call, Code, 'undocumented', 'The library returned a code that it does not document.', exUnknown,
    'Ask the printer for its last receipt and totals before you repeat the call.');
end;

function ClosedFailure(const Call: string): ENotExecuted;
begin
  Result := ENotExecuted.Create(Call, -1, 'notOpen', 'This session is closed.', exNo, 'Open another session.');
end;

function NotOursFailure(const Call: string): ENotExecuted;
begin
  Result := ENotExecuted.Create(Call, -1, 'notOpen', 'This receipt was not begun, is over, or another one may be open.', exNo,
    'To cancel another one call destroyParagon through the session.');
end;

function NotBegunFailure(const Call: string): ENotExecuted;
begin
  Result := ENotExecuted.Create(Call, -1, 'notOpen', 'This receipt is not open: its begin has not worked, or it is over.', exNo,
    'Call Recover if BeginReceipt failed, and begin it again.');
end;

function AlreadyBegunFailure(const Call: string): ENotExecuted;
begin
  Result := ENotExecuted.Create(Call, -1, 'notOpen', 'This receipt is open already, and goes on.', exNo, 'End it or cancel it first.');
end;

function AnotherOpenFailure(const Call: string): ENotExecuted;
begin
  Result := ENotExecuted.Create(Call, -1, 'notOpen', 'Another receipt is open, and is left alone.', exNo, 'Call Recover.');
end;

function ReasonOf(Question: ECall): string;
begin
  if Question.Code <> 0 then
    Result := Question.Call + ': code ' + IntToStr(Question.Code)
  else
    Result := Copy(Question.Happened, 1, Length(Question.Happened) - 1);
end;

function UnansweredFailure(const Call: string; Question: ECall): ENotExecuted;
begin
  Result := ENotExecuted.Create(Call, -1, 'notOpen', 'The printer does not say whether a receipt is open (' + ReasonOf(Question) + ').', exNo, 'Begin it again when the printer answers.');
end;

function DoubtOf(const Call, Happened: string): EOutcomeUnknown;
begin
  Result := EOutcomeUnknown.Create(Call, 0, 'totals', Happened, exUnknown, 'Call Recover.');
end;

function RepeatedFailure(Failure: EOutcomeUnknown): EOutcomeUnknown;
begin
  Result := EOutcomeUnknown.Create(Failure.Call, Failure.Code, Failure.Name, Failure.Happened, Failure.Executed, Failure.Advice);
end;

end.
