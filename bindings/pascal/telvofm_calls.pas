{ The calls of one receipt and its questions to the printer: when the outcome of one is open, no other is made. }
unit telvofm_calls;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}

interface

uses
  telvofm_session;

type
  { What TReceipt sends through. Its calls raise ENotExecuted when the session has been freed. }
  TCalls = class
  private
    FSession: TSession;
    FSessionNumber: Integer;
    FCall, FDoubt: string;
    FIsInDoubt: Boolean;
  public
    { Call is named by what fails before any other is begun. }
    constructor Create(Session: TSession; const Call: string);

    { The session; it may have been freed. }
    function Session: TSession;
    { Whether it has not been. }
    function IsSessionOpen: Boolean;

    { Begins a call; raises EOutcomeUnknown when the outcome of an earlier one is open. }
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
    { Everything is sent again. }
    procedure ForgetDoubt;
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

procedure TCalls.Start(const Call: string);
begin
  RequireNoDoubt;
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
  if FIsInDoubt then
    raise DoubtOf(FCall, FDoubt);
end;

procedure TCalls.ForgetDoubt;
begin
  FIsInDoubt := False;
end;

end.
