{ The calls of one receipt and its questions to the printer: none is made that could go into another one, and none while the outcome
  of an earlier one is open. }
unit telvofm_calls;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}

interface

uses
  telvofm_answers, telvofm_failures, telvofm_session;

type
  { What TReceipt sends through. Its calls raise ENotExecuted when the session has been freed. }
  TCalls = class
  private
    FSession: TSession;
    FSessionNumber: Integer;
    FBegin: Integer; { of all in the session; 0 for none }
    FCall: string;
    FDoubt: EOutcomeUnknown; { nil while there is none }
    FNumberBefore: UnicodeString;
    FIsTaken, FIsOver, FIsAnotherOpen: Boolean;
    procedure ClaimWhatIsOpen;
    function IsClosed(const Last: TAnswers): Boolean;
    procedure Compare(const Given: UnicodeString; Expected: Currency; const What: string);
    procedure RaiseNoAnswer(Failure: ECall);
    procedure KeepDoubt(Failure: EOutcomeUnknown);
  public
    { Call is named by what fails before any other is begun. }
    constructor Create(Session: TSession; const Call: string);
    { Sends nothing. }
    destructor Destroy; override;

    { The session; it may have been freed. }
    function Session: TSession;
    { Whether it has not been. }
    function IsSessionOpen: Boolean;

    { The printer has begun it. }
    procedure Take;
    { It is ended, cancelled, or recovered without a person: nothing of it is open. }
    procedure Finish;
    { Whether, of the receipts of the session, whatever is open is this one. }
    function HasBegunLast: Boolean;
    { Whether the printer has begun it, it is not over, and no other was begun since. }
    function IsOpen: Boolean;
    { Raises ENotExecuted when it is not open, because what is sent goes into whatever receipt is. }
    procedure RequireOpen(const Call: string);

    { Begins a call. }
    procedure Start(const Call: string);
    { Raises what the call has returned, unless it is 0. }
    procedure Check(Code: Integer);
    { Raises EOutcomeUnknown when the printer's answer is another amount, or none, if the printer can be asked. }
    procedure CompareAnswer(const Question: UnicodeString; Expected: Currency; const What: string);
    { Behind an end: the last receipt is another one than before, of this total. Returns its number; raises EOutcomeUnknown. }
    function CompareEnded(Total: Currency): UnicodeString;
    { Behind a cancelling, if the printer can be asked: none is open, and the last receipt is that of before. Raises EOutcomeUnknown. }
    procedure CompareCancelled;

    { Nothing more is sent from here on, as this has happened. }
    procedure Doubt(const Happened: string);
    { The same, and raises EOutcomeUnknown. }
    procedure RaiseDoubt(const Happened: string);
    { Raises EOutcomeUnknown with the same sentence again when the outcome of an earlier call is open. }
    procedure RequireNoDoubt;
    { What an earlier receipt has left. }
    procedure Forget;
    { Before a begin: the last receipt's number; empty when the printer cannot be asked. One wrong answer is not believed, and a
      connection that is dead or has shifted is opened again. Raises ENotExecuted while a receipt is open, and when the printer does
      not say whether one is. }
    function NumberWhileNoneIsOpen: UnicodeString;
    { Whatever is open from here on is this receipt, behind that number; not when that is empty, because nobody knows then. }
    procedure Expect(const NumberBefore: UnicodeString);

    { The last receipt's number before the begin; empty when the printer cannot be asked. }
    property NumberBefore: UnicodeString read FNumberBefore;
    { Whether another one is, so that this one was not begun. }
    property IsAnotherOpen: Boolean read FIsAnotherOpen;

    { Whether Finish was called. }
    property IsOver: Boolean read FIsOver;
  end;

implementation

uses
  SysUtils, telvofm_questions, telvofm_texts;

constructor TCalls.Create(Session: TSession; const Call: string);
begin
  inherited Create;
  FSession := Session;
  FSessionNumber := Session.Number;
  FCall := Call;
end;

destructor TCalls.Destroy;
begin
  FDoubt.Free;
  inherited Destroy;
end;

function TCalls.IsSessionOpen: Boolean;
begin
  Result := IsOpenSession(FSessionNumber);
end;

function TCalls.Session: TSession;
begin
  if not IsSessionOpen then
    raise ClosedFailure(FCall);
  Result := FSession;
end;

procedure TCalls.ClaimWhatIsOpen;
begin
  FBegin := Session.NextBegin;
end;

procedure TCalls.Take;
begin
  ClaimWhatIsOpen;
  FIsTaken := True;
end;

procedure TCalls.Finish;
begin
  FIsOver := True;
end;

function TCalls.HasBegunLast: Boolean;
begin
  Result := (FBegin <> 0) and (FBegin = Session.LastBegin);
end;

function TCalls.IsOpen: Boolean;
begin
  Result := FIsTaken and not FIsOver and HasBegunLast;
end;

procedure TCalls.RequireOpen(const Call: string);
begin
  RequireNoDoubt;
  if not IsOpen then
    raise NotBegunFailure(Call);
end;

procedure TCalls.Start(const Call: string);
begin
  FCall := Call;
  Session.Start(Call);
end;

procedure TCalls.Check(Code: Integer);
begin
  try
    Session.Check(Code);
  except
    on Unknown: EOutcomeUnknown do
    begin
      KeepDoubt(RepeatedFailure(Unknown));
      raise;
    end;
  end;
end;

procedure TCalls.RaiseNoAnswer(Failure: ECall);
begin
  RaiseDoubt('The printer does not say what it has done (' + ReasonOf(Failure) + ').');
end;

procedure TCalls.Compare(const Given: UnicodeString; Expected: Currency; const What: string);
begin
  if not IsAmount(Given, Expected) then
    RaiseDoubt('For the printer ' + What + ' is "' + string(Given) + '", for the till ' + string(MoneyText(Expected)) +
      ': something was carried out twice, or not at all.');
end;

procedure TCalls.CompareAnswer(const Question: UnicodeString; Expected: Currency; const What: string);
var
  Given: UnicodeString;
begin
  if not CanBeAsked(Session.Questions) then
    Exit;
  Given := '';
  try
    Given := AnswerTo(Session, Question);
  except
    on Failure: ECall do
      RaiseNoAnswer(Failure);
  end;
  Compare(Given, Expected, What);
end;

function TCalls.CompareEnded(Total: Currency): UnicodeString;
var
  Last: TAnswers;
begin
  try
    Last := WithLastNumber(Session, [Session.Questions.LastTotal]);
  except
    on Failure: ECall do
      RaiseNoAnswer(Failure);
  end;
  Result := Last.Number;
  if Result = NumberBefore then
    RaiseDoubt('The printer''s last receipt is still ' + string(Result) + '.');
  Compare(Last.Others[0], Total, 'the total of the last receipt');
end;

procedure TCalls.CompareCancelled;
var
  Last: TAnswers;
begin
  if not CanBeAsked(Session.Questions) then
    Exit;
  try
    Last := WithLastNumber(Session, [Session.Questions.State]);
  except
    on Failure: ECall do
      RaiseNoAnswer(Failure);
  end;
  if (Last.Number <> NumberBefore) or not IsClosed(Last) then
    RaiseDoubt('The printer''s last receipt is ' + string(Last.Number) + ', and its state ' + string(Last.Others[0]) + '.');
end;

procedure TCalls.KeepDoubt(Failure: EOutcomeUnknown);
begin
  FDoubt.Free;
  FDoubt := Failure;
end;

procedure TCalls.Doubt(const Happened: string);
begin
  KeepDoubt(DoubtOf(FCall, Happened));
end;

procedure TCalls.RaiseDoubt(const Happened: string);
begin
  Doubt(Happened);
  raise RepeatedFailure(FDoubt);
end;

procedure TCalls.RequireNoDoubt;
begin
  if (FDoubt <> nil) and not FIsOver then
    raise RepeatedFailure(FDoubt);
end;

procedure TCalls.Forget;
begin
  FBegin := 0;
  FNumberBefore := '';
  FIsTaken := False;
  FIsOver := False;
  FIsAnotherOpen := False;
  KeepDoubt(nil);
end;

{ Behind the last receipt's number and the state. }
function TCalls.IsClosed(const Last: TAnswers): Boolean;
begin
  Result := Last.Others[0] = Session.Questions.Closed;
end;

function TCalls.NumberWhileNoneIsOpen: UnicodeString;
var
  Last: TAnswers;
  IsAnswered: Boolean;
begin
  if not CanBeAsked(Session.Questions) then
    Exit('');
  IsAnswered := True;
  try
    Last := WithLastNumber(Session, [Session.Questions.State]);
  except
    on ECall do
      IsAnswered := False;
  end;
  if IsAnswered and not IsClosed(Last) and IsOpen then
    raise AlreadyBegunFailure('paragonBegin');
  if not IsAnswered or not IsClosed(Last) then
  begin
    Session.Reopen;
    try
      Last := WithLastNumber(Session, [Session.Questions.State]);
    except
      on Failure: EOutcomeUnknown do
        raise UnansweredFailure('paragonBegin', Failure);
    end;
  end;
  if not IsClosed(Last) and IsOpen then
    raise AlreadyBegunFailure('paragonBegin');
  FIsAnotherOpen := not IsClosed(Last);
  if FIsAnotherOpen then
    raise AnotherOpenFailure('paragonBegin');
  Result := Last.Number;
end;

procedure TCalls.Expect(const NumberBefore: UnicodeString);
begin
  FNumberBefore := NumberBefore;
  if NumberBefore <> '' then
    ClaimWhatIsOpen;
end;

end.
