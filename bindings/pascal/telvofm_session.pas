{ The connection to a printer. Receipts on it are in telvofm_receipt. }
unit telvofm_session;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}

interface

uses
  telvofm_functions, telvofm_questions;

type
  { Bytes of any length, which the library holds until the last reference to them goes. }
  IResultData = interface
    { For the functions of the raw layer whose names end in ResultObject; good as long as the reference to this. }
    function Target: PResultObject;
    { What it holds, copied; NULs are bytes like others. }
    function Bytes: RawByteString;
    { What it holds, decoded from Windows-1250. }
    function Text: UnicodeString;
  end;

  { A printer that is connected until the session is freed. A program has one at a time.

    What is sent raises ERefused, ENotExecuted or EOutcomeUnknown, each an ECall; a text that Windows-1250 cannot hold raises EText
    before anything is sent. }
  TSession = class
  private
    FAddress: RawByteString;
    FDevice: Integer;
    FQuestions: TQuestions;
    FCall: string;
    FStarted, FLastMilliseconds: UInt64;
    FNumber, FLastBegin: Integer;
    procedure Open;
  public
    { Opens "192.168.1.10:9100", "COM3" and whatever else openFM takes; Device is the printer's own address, whose low byte is sent.
      Raises ELibrary when there is no library that fits, EInvalidOpException while another session is open, EArgumentException for
      questions of which some are missing, and ENotExecuted when no printer answers. }
    constructor Create(const Address: UnicodeString; Device: Integer = 1); overload;
    { The same for a printer that has other names for what a receipt asks; NoQuestions is for one that cannot be asked. }
    constructor Create(const Address: UnicodeString; Device: Integer; const Questions: TQuestions); overload;
    { Closes the connection. }
    destructor Destroy; override;

    { Closes the connection and opens it again. The library forgets the settings and pictures of the session. Raises ENotExecuted when
      the printer does not answer. }
    procedure Reopen;

    { Any function of the raw layer that returns 0 or a code, in two lines, because the time that it takes counts:

        Session.Start('clearDisplay');
        Session.Check(Functions.clearDisplay(Session.Device, 0, nil));

      and one that fills a result object, which is Data.Target of a Data := Session.NewResult. Texts for it are made by EncodeText,
      names of files by EncodeFileName.

      Start raises EArgumentException for a function that fills a buffer. }
    procedure Start(const Call: string);
    { Raises ERefused, ENotExecuted or EOutcomeUnknown unless the code is 0. }
    procedure Check(Code: Integer);
    { An empty result object, which is released with the last reference to it. }
    function NewResult: IResultData;

    { Opens the selling day; SaleMode is the printer's number. False when the printer refused, as it does when the day is open
      already. Raises ENotExecuted or EOutcomeUnknown otherwise. }
    function BeginDay(SaleMode: Integer = 0): Boolean;
    { The text of a variable of the printer's. Raises ERefused when it has none of that name. }
    function Variable(const Name: UnicodeString): UnicodeString;
    { The text of the last receipt. }
    function LastReceipt: UnicodeString;
    { The text of the whole electronic journal, of any length. }
    function Journal: UnicodeString;

    { For receipts: the number of another begin. }
    function NextBegin: Integer;
    { The begin whose receipt is open, if one of this session's is. }
    property LastBegin: Integer read FLastBegin;

    { The printer's own address. }
    property Device: Integer read FDevice;
    { How long the last call took. }
    property LastMilliseconds: UInt64 read FLastMilliseconds;
    { How the printer calls what a receipt asks for. }
    property Questions: TQuestions read FQuestions;
    { Which of all sessions of this program it is; no other one ever has the same. }
    property Number: Integer read FNumber;
  end;

{ Whether the session of this number is open. A receipt asks it before it uses a session that may have been freed. }
function IsOpenSession(Number: Integer): Boolean;

implementation

uses
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
  LastNumber: Integer = 0;

{$IFNDEF FPC}
function GetTickCount64: UInt64; stdcall; external 'kernel32.dll';
{$ENDIF}

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
  RequireAllOrNone(Questions);
  FAddress := EncodeText(Address);
  FDevice := Device;
  FQuestions := Questions;
  LoadTelvofm;
  if OpenOne <> nil then
    raise EInvalidOpException.Create('A session is open, and a program has one at a time; free it first.');
  OpenOne := Self;
  Inc(LastNumber);
  FNumber := LastNumber;
  Open;
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

function IsOpenSession(Number: Integer): Boolean;
begin
  Result := (OpenOne <> nil) and (OpenOne.FNumber = Number);
end;

procedure RequireNoBuffer(const Call: string);
var
  Index: Integer;
begin
  for Index := Low(BufferFunctionNames) to High(BufferFunctionNames) do
    if Call = string(BufferFunctionNames[Index]) then
      raise EArgumentException.Create(Call + ' fills a buffer, and one that is too short ends the process; use its twin for result ' +
        'objects, or the raw layer if it has none.');
end;

procedure TSession.Start(const Call: string);
begin
  RequireNoBuffer(Call);
  FCall := Call;
  FStarted := GetTickCount64;
end;

procedure TSession.Check(Code: Integer);
begin
  FLastMilliseconds := GetTickCount64 - FStarted;
  if Code <> 0 then
    raise FailureOf(FCall, Code, FLastMilliseconds > SlowMilliseconds);
end;

function TSession.NextBegin: Integer;
begin
  Inc(FLastBegin);
  Result := FLastBegin;
end;

function TSession.NewResult: IResultData;
begin
  Result := TResultData.Create;
end;

function TSession.BeginDay(SaleMode: Integer): Boolean;
begin
  Result := True;
  try
    Start('sellingDayBegin');
    Check(Functions.sellingDayBegin(FDevice, SaleMode));
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
