{ The connection to a printer. Receipts on it are in telvofm_receipt. }
unit telvofm_session;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}

interface

uses
  telvofm_functions;

type
  { The printer's own names of the variables that a receipt asks for; Closed is what State is while no receipt is open. }
  TQuestions = record
    LastReceipt, LastTotal, State, Closed, Total, Due: UnicodeString;
  end;

const
  { Those of the virtual printer. }
  UsualQuestions: TQuestions = (LastReceipt: 'LAST_RECEIPT'; LastTotal: 'LAST_TOTAL'; State: 'STATE'; Closed: 'closed';
    Total: 'TOTAL'; Due: 'DUE');
  { For a printer that cannot be asked: a receipt asks nothing, and Recover wants a person. }
  NoQuestions: TQuestions = (LastReceipt: ''; LastTotal: ''; State: ''; Closed: ''; Total: ''; Due: '');

type
  { Bytes of any length, which the library holds until the last reference to them goes. }
  IResultData = interface
    { For the functions of the raw layer whose names end in ResultObject. }
    function Target: PResultObject;
    function Bytes: RawByteString;
    function Text: UnicodeString;
  end;

  { A printer that is connected until the session is freed. A program has one at a time. }
  TSession = class
  private
    FAddress: RawByteString;
    FDevice: Integer;
    FQuestions: TQuestions;
    FCall: string;
    FStarted, FLastMilliseconds: UInt64;
    procedure Open;
  public
    { Opens "192.168.1.10:9100", "COM3" and whatever else openFM takes. }
    constructor Create(const Address: UnicodeString; Device: Integer = 1); overload;
    constructor Create(const Address: UnicodeString; Device: Integer; const Questions: TQuestions); overload;
    destructor Destroy; override;

    { Closes the connection and opens it again. The library forgets the settings and pictures of the session. }
    procedure Reopen;

    { Any function of the raw layer that returns 0 or a code, in two lines, because the time that it takes counts:

        Session.Start('clearDisplay');
        Session.Check(Functions.clearDisplay(Session.Device, 0, nil));

      and one that fills a result object, which is Result.Target of a Result := Session.NewResult. }
    procedure Start(const Call: string);
    procedure Check(Code: Integer);
    function NewResult: IResultData;

    { Opens the selling day. False when the printer refused, as it does when the day is open already. }
    function BeginDay: Boolean;
    { The text of a variable of the printer's. }
    function Variable(const Name: UnicodeString): UnicodeString;
    function LastReceipt: UnicodeString;
    function Journal: UnicodeString;

    property Device: Integer read FDevice;
    { How long the last call took. }
    property LastMilliseconds: UInt64 read FLastMilliseconds;
    property Questions: TQuestions read FQuestions;
  end;

implementation

uses
  {$IFNDEF FPC} Windows, {$ENDIF}
  SysUtils, telvofm_failures, telvofm_library, telvofm_texts;

const
  { A request that nobody answers is sent again after about three seconds: what took longer may have been carried out twice. }
  SlowMilliseconds = 2500;

type
  TResultData = class(TInterfacedObject, IResultData)
  private
    FTarget: PResultObject;
  public
    constructor Create;
    destructor Destroy; override;
    function Target: PResultObject;
    function Bytes: RawByteString;
    function Text: UnicodeString;
  end;

var
  OpenOne: TSession = nil;

{ ---- Result objects ---- }

constructor TResultData.Create;
begin
  inherited Create;
  FTarget := Functions.createResultObject();
  if FTarget = nil then
    OutOfMemoryError;
end;

destructor TResultData.Destroy;
begin
  if FTarget <> nil then
    Functions.destroyResultObject(FTarget);
  inherited Destroy;
end;

function TResultData.Target: PResultObject;
begin
  Result := FTarget;
end;

function TResultData.Bytes: RawByteString;
begin
  SetLength(Result, Functions.getResultObjectLength(FTarget));
  if Result <> '' then
    Move(Functions.getResultObjectString(FTarget)^, PAnsiChar(Result)^, Length(Result));
end;

function TResultData.Text: UnicodeString;
begin
  Result := DecodeText(Bytes);
end;

{ ---- Session ---- }

constructor TSession.Create(const Address: UnicodeString; Device: Integer);
begin
  Create(Address, Device, UsualQuestions);
end;

constructor TSession.Create(const Address: UnicodeString; Device: Integer; const Questions: TQuestions);
begin
  inherited Create;
  FAddress := EncodeText(Address);
  FDevice := Device;
  FQuestions := Questions;
  LoadTelvofm;
  if OpenOne <> nil then
    raise EInvalidOpException.Create('A session is open, and a program has one at a time; free it first.');
  Open;
  OpenOne := Self;
end;

destructor TSession.Destroy;
begin
  if OpenOne = Self then
  begin
    OpenOne := nil;
    Functions.closeFM();
  end;
  inherited Destroy;
end;

procedure TSession.Open;
begin
  try
    Start('openFM');
    Check(Functions.openFM(PAnsiChar(FAddress)));
  except
    Functions.closeFM(); { due after a failed open, too }
    raise;
  end;
end;

procedure TSession.Reopen;
begin
  Functions.closeFM();
  Open;
end;

procedure TSession.Start(const Call: string);
begin
  FCall := Call;
  FStarted := GetTickCount64;
end;

procedure TSession.Check(Code: Integer);
begin
  FLastMilliseconds := GetTickCount64 - FStarted;
  if Code <> 0 then
    raise FailureOf(FCall, Code, FLastMilliseconds > SlowMilliseconds);
end;

function TSession.NewResult: IResultData;
begin
  Result := TResultData.Create;
end;

function TSession.BeginDay: Boolean;
begin
  Result := True;
  try
    Start('sellingDayBegin');
    Check(Functions.sellingDayBegin(FDevice, 0));
  except
    on Failure: ECall do
    begin
      Result := False;
      if Failure.Name <> 'refused' then { late or not: then an earlier try has opened it }
        raise;
    end;
  end;
end;

function TSession.Variable(const Name: UnicodeString): UnicodeString;
var
  Encoded: RawByteString;
  Data: IResultData;
begin
  Encoded := EncodeText(Name);
  Data := NewResult;
  Start('getVariableResultObject');
  Check(Functions.getVariableResultObject(FDevice, PAnsiChar(Encoded), Data.Target));
  Result := Data.Text;
end;

function TSession.LastReceipt: UnicodeString;
var
  Data: IResultData;
begin
  Data := NewResult;
  Start('getLastParagonResultObject');
  Check(Functions.getLastParagonResultObject(FDevice, Data.Target));
  Result := Data.Text;
end;

function TSession.Journal: UnicodeString;
var
  Data: IResultData;
begin
  Data := NewResult;
  Start('getJournal_ResultObject');
  Check(Functions.getJournal_ResultObject(FDevice, Data.Target));
  Result := Data.Text;
end;

end.
