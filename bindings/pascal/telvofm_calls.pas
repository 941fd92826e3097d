{ The calls of one receipt and its questions to the printer: none is made that could go into another one, and none while the outcome
  of an earlier one is open. }
unit telvofm_calls;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}

interface

uses
  telvofm_questions, telvofm_session;

type
  { What TReceipt sends through. Its calls raise ENotExecuted when the session has been freed. }
  TCalls = class
  private
    FSession: TSession;
    FSessionNumber: Integer;
    FBegin: Integer; { of all in the session; 0 for none }
    FCall, FDoubt: string;
    FNumberBefore: UnicodeString;
    FIsTaken, FIsOver, FIsAnotherOpen, FIsInDoubt: Boolean;
  public
    { Call is named by what fails before any other is begun. }
    constructor Create(Session: TSession; const Call: string);

    { The session; it may have been freed. }
    function Session: TSession;
    { Whether it has not been. }
    function IsSessionOpen: Boolean;

    { From here on whatever is open is this receipt. }
    procedure ClaimWhatIsOpen;
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
    { What the printer answers; empty without a question. One that fails leaves the call in doubt. }
    function Answer(const Question: UnicodeString): UnicodeString;
    { Raises EOutcomeUnknown when the printer's answer is another amount. }
    procedure Compare(const Question: UnicodeString; Expected: Currency; const What: string);

    { Nothing more is sent from here on, as this has happened. }
    procedure Doubt(const Happened: string);
    { The same, and raises EOutcomeUnknown. }
    procedure RaiseDoubt(const Happened: string);
    { Raises EOutcomeUnknown when the outcome of an earlier call is open. }
    procedure RequireNoDoubt;
    { Before a begin: asks for the last receipt's number and what is open. Raises EOutcomeUnknown when the outcome of an earlier call
      is open, and ENotExecuted when it is this receipt that is. }
    procedure StartAfresh;

    { The last receipt's number before the begin; empty when the printer cannot be asked. }
    property NumberBefore: UnicodeString read FNumberBefore write FNumberBefore;
    { Whether one was open before the begin: whatever is open is not this one. }
    property IsAnotherOpen: Boolean read FIsAnotherOpen;

    { Whether Finish was called. }
    property IsOver: Boolean read FIsOver;
  end;

implementation

uses
  SysUtils, telvofm_failures, telvofm_texts;

constructor TCalls.Create(Session: TSession; const Call: string);
begin
  inherited Create;
  FSession := Session;
  FSessionNumber := Session.Number;
  FCall := Call;
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
      Doubt(Unknown.Message);
      raise;
    end;
  end;
end;

function TCalls.Answer(const Question: UnicodeString): UnicodeString;
begin
  Result := '';
  if Question <> '' then
    try
      Result := Session.Variable(Question);
    except
      on Failure: ECall do
        RaiseDoubt('The printer does not say what it has done (' + Failure.Call + ': code ' + IntToStr(Failure.Code) + ').');
    end;
end;

procedure TCalls.Compare(const Question: UnicodeString; Expected: Currency; const What: string);
var
  Given: UnicodeString;
begin
  if Question = '' then
    Exit;
  Given := Answer(Question);
  if not IsAmount(Given, Expected) then
    RaiseDoubt('For the printer ' + What + ' is "' + string(Given) + '", for the till ' + string(MoneyText(Expected)) +
      ': something was carried out twice, or not at all.');
end;

procedure TCalls.Doubt(const Happened: string);
begin
  FIsInDoubt := True;
  FDoubt := Happened;
end;

procedure TCalls.RaiseDoubt(const Happened: string);
begin
  Doubt(Happened);
  raise DoubtOf(FCall, Happened);
end;

procedure TCalls.RequireNoDoubt;
begin
  if FIsInDoubt and not FIsOver then
    raise DoubtOf(FCall, FDoubt);
end;

procedure TCalls.StartAfresh;
var
  LastNumber: UnicodeString;
  IsOneOpen, IsAsked: Boolean;
begin
  RequireNoDoubt;
  IsAsked := CanBeAsked(Session.Questions);
  LastNumber := '';
  IsOneOpen := False;
  if IsAsked then
  begin
    LastNumber := Session.Variable(Session.Questions.LastReceipt);
    IsOneOpen := Session.Variable(Session.Questions.State) <> Session.Questions.Closed;
  end;
  if IsOneOpen and IsOpen then
    raise AlreadyBegunFailure('paragonBegin');
  FBegin := 0;
  FIsTaken := False;
  FIsOver := False;
  FIsInDoubt := False;
  FNumberBefore := LastNumber;
  FIsAnotherOpen := IsOneOpen;
  if IsAsked and not IsOneOpen then
    ClaimWhatIsOpen;
end;

end.
