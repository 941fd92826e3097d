{ A receipt, from its beginning to its end, and what happened to it when something failed. }
unit telvofm_receipt;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}

interface

uses
  telvofm_session;

type
  TVerdict = (vdSold, vdNotSold, vdAskAPerson);

  { What the printer says has become of a receipt; Number if it is sold. }
  TRecovery = record
    Verdict: TVerdict;
    Sentence: string;
    Number: UnicodeString;
  end;

  { A receipt that compares its own total with the printer's, because a request whose answer was lost is sent again, may be
    carried out twice, and returns 0. After any failure Recover tells what happened. }
  TReceipt = class
  private
    FSession: TSession;
    FIsBegun: Boolean;
    FIsCompared: Boolean; { its total with the printer's, before the first payment }
    FIsFinished: Boolean; { as far as the till goes: paid in full, or told to end }
    FIsInDoubt: Boolean; { nothing more is sold into it }
    FCall, FDoubt: string;
    FNumberBefore: UnicodeString;
    FTotal, FPaid: Currency;
    procedure Line(Value: Currency; Code: Integer);
    procedure Count(Amount: Currency);
    function Due: Currency;
    procedure Start(const Call: string);
    procedure Check(Code: Integer);
    procedure Compare(const Question: UnicodeString; Expected: Currency; const What: string);
    function Answer(const Question: UnicodeString): UnicodeString;
    procedure RaiseDoubt(const Happened: string);
    procedure Finish;
    function Judged: TRecovery;
  public
    { One that is not begun yet; free it before the session. }
    constructor Create(Session: TSession);
    { One that a till left when it was switched off: call Recover on it. }
    constructor CreateInterrupted(Session: TSession; const NumberBefore: UnicodeString; Total: Currency);

    { Opens the receipt; what the numbers mean is the printer's matter. }
    procedure BeginReceipt(SaleType: Integer = 1; Commission: Integer = 0; ReceiptType: Integer = 0; Recapitulation: Integer = 1;
      Picture: Integer = 0);
    { Sells an item: Total for Quantity of UnitName at UnitPrice each. }
    procedure Sell(const Name: UnicodeString; Total: Currency; Vat: WideChar; Quantity, UnitPrice: Currency;
      const UnitName: UnicodeString);
    { Takes an item of this receipt back, which was sold with the same arguments. }
    procedure Void(const Name: UnicodeString; Total: Currency; Vat: WideChar; Quantity, UnitPrice: Currency;
      const UnitName: UnicodeString);
    { A discount of a sum on the item that was sold last; Operation is the printer's number for that. }
    procedure Discount(const Description: UnicodeString; Amount: Currency; Vat: WideChar; Operation: Integer = 0);
    { Takes a payment under the printer's payment type. More than is due is given back. }
    procedure Pay(PaymentType: Integer; Amount: Currency; const Description: UnicodeString);
    { Ends the receipt and returns its number; an empty one if the printer cannot be asked. }
    function EndReceipt(Picture: Integer = 0): UnicodeString;
    { Cancels the receipt; the printer prints the description. }
    procedure Cancel(const Description: UnicodeString = '');

    { Asks the printer what has become of this receipt. One that is still open is ended when it is paid as it should be, and
      cancelled otherwise. Never fails, and may be called again. }
    function Recover: TRecovery;

    { The last receipt's number before this one began; empty while it has not, or when the printer cannot be asked. }
    property NumberBefore: UnicodeString read FNumberBefore;
    { What is sold so far. Correct it after what went to the printer past this class. }
    property Total: Currency read FTotal write FTotal;
    property Paid: Currency read FPaid;
  end;

{ "sold: ", "not sold: " or "ask a person: ", and the sentence. }
function RecoveryText(const Recovery: TRecovery): string;

implementation

uses
  SysUtils, telvofm_failures, telvofm_library, telvofm_texts;

{ ---- Selling ---- }

type
  { What a line says of its item, as the library takes it; the record owns the texts while the call runs. }
  TTextsOfItem = record
    Name, Total, Vat, Quantity, UnitPrice, UnitName: RawByteString;
  end;

constructor TReceipt.Create(Session: TSession);
begin
  inherited Create;
  FSession := Session;
end;

constructor TReceipt.CreateInterrupted(Session: TSession; const NumberBefore: UnicodeString; Total: Currency);
begin
  Create(Session);
  FIsBegun := True;
  FIsFinished := True;
  FNumberBefore := NumberBefore;
  FTotal := Total;
  FPaid := Total;
  FCall := 'Recover';
  FIsInDoubt := True;
  FDoubt := 'The till was interrupted in this receipt.';
end;

procedure TReceipt.BeginReceipt(SaleType, Commission, ReceiptType, Recapitulation, Picture: Integer);
begin
  if FSession.Questions.LastReceipt <> '' then
    FNumberBefore := FSession.Variable(FSession.Questions.LastReceipt);
  FIsBegun := True;
  try
    Start('paragonBegin');
    Check(Functions.paragonBegin(FSession.Device, 0, SaleType, Commission, ReceiptType, Recapitulation, Picture));
  except
    on Failure: ECall do
    begin
      FIsBegun := Failure is EOutcomeUnknown;
      raise;
    end;
  end;
end;

function TextsOfItem(const Name: UnicodeString; Total: Currency; Vat: WideChar; Quantity, UnitPrice: Currency;
  const UnitName: UnicodeString): TTextsOfItem;
begin
  Result.Name := EncodeText(Name);
  Result.Total := MoneyText(Total);
  Result.Vat := EncodeText(Vat);
  Result.Quantity := QuantityText(Quantity);
  Result.UnitPrice := MoneyText(UnitPrice);
  Result.UnitName := EncodeText(UnitName);
end;

procedure TReceipt.Sell(const Name: UnicodeString; Total: Currency; Vat: WideChar; Quantity, UnitPrice: Currency;
  const UnitName: UnicodeString);
var
  Texts: TTextsOfItem;
begin
  Texts := TextsOfItem(Name, Total, Vat, Quantity, UnitPrice, UnitName);
  Start('itemSale_str');
  Line(Total, Functions.itemSale_str(FSession.Device, 0, PAnsiChar(Texts.Name), PAnsiChar(Texts.Total), PAnsiChar(Texts.Vat),
    PAnsiChar(Texts.Quantity), PAnsiChar(Texts.UnitPrice), PAnsiChar(Texts.UnitName)));
end;

procedure TReceipt.Void(const Name: UnicodeString; Total: Currency; Vat: WideChar; Quantity, UnitPrice: Currency;
  const UnitName: UnicodeString);
var
  Texts: TTextsOfItem;
begin
  Texts := TextsOfItem(Name, Total, Vat, Quantity, UnitPrice, UnitName);
  Start('itemVoid_str');
  Line(-Total, Functions.itemVoid_str(FSession.Device, 0, PAnsiChar(Texts.Name), PAnsiChar(Texts.Total), PAnsiChar(Texts.Vat),
    PAnsiChar(Texts.Quantity), PAnsiChar(Texts.UnitPrice), PAnsiChar(Texts.UnitName), nil));
end;

procedure TReceipt.Discount(const Description: UnicodeString; Amount: Currency; Vat: WideChar; Operation: Integer);
var
  Words, Sum, Letter: RawByteString;
begin
  Words := EncodeText(Description);
  Sum := MoneyText(Amount);
  Letter := EncodeText(Vat);
  Start('itemDiscount_str');
  Line(-Amount, Functions.itemDiscount_str(FSession.Device, 0, PAnsiChar(Words), Operation, PAnsiChar(Sum), PAnsiChar(Letter)));
end;

procedure TReceipt.Pay(PaymentType: Integer; Amount: Currency; const Description: UnicodeString);
var
  Sum, Part, NoExchange, Words: RawByteString;
begin
  Sum := MoneyText(FTotal);
  Part := PaymentText(Amount);
  NoExchange := EncodeText('0');
  Words := EncodeText(Description);
  Start('payment_str');
  if not FIsCompared then
  begin
    Compare(FSession.Questions.Total, FTotal, 'the total');
    FIsCompared := True;
    Start('payment_str');
  end;
  try
    Check(Functions.payment_str(FSession.Device, 0, PaymentType, PAnsiChar(Sum), PAnsiChar(Part), PAnsiChar(NoExchange), PAnsiChar(Words)));
  except
    on EOutcomeUnknown do
    begin
      Count(Amount); { as it was meant }
      raise;
    end;
  end;
  Count(Amount);
  Compare(FSession.Questions.Due, Due, 'what is due');
end;

function TReceipt.EndReceipt(Picture: Integer): UnicodeString;
begin
  FIsFinished := True;
  Start('paragonEnd');
  Check(Functions.paragonEnd(FSession.Device, 0, Picture));
  Result := Answer(FSession.Questions.LastReceipt);
  if Result = '' then
    Exit;
  if Result = FNumberBefore then
    RaiseDoubt('The printer''s last receipt is still ' + string(Result) + '.');
  Compare(FSession.Questions.LastTotal, FTotal, 'the total of the last receipt');
end;

procedure TReceipt.Cancel(const Description: UnicodeString);
var
  Words: RawByteString;
begin
  Words := EncodeText(Description);
  FSession.Start('destroyParagon');
  FSession.Check(Functions.destroyParagon(FSession.Device, 0, PAnsiChar(Words)));
  FIsBegun := False;
end;

{ ---- Comparing ---- }

{ Begins one call of this receipt. Whatever leaves its outcome open is remembered: then nothing more is sold into it. }
procedure TReceipt.Start(const Call: string);
begin
  if FIsInDoubt then
    raise DoubtOf(FCall, FDoubt);
  FCall := Call;
  FSession.Start(Call);
end;

procedure TReceipt.Check(Code: Integer);
begin
  try
    FSession.Check(Code);
  except
    on Unknown: EOutcomeUnknown do
    begin
      FIsInDoubt := True;
      FDoubt := Unknown.Message;
      raise;
    end;
  end;
end;

procedure TReceipt.Line(Value: Currency; Code: Integer);
begin
  Check(Code);
  FTotal := FTotal + Value;
end;

procedure TReceipt.Count(Amount: Currency);
begin
  FPaid := FPaid + Amount;
  FIsFinished := Due = 0;
end;

{ What is left to pay, or to pay out; more than that is given back. }
function TReceipt.Due: Currency;
begin
  Result := FTotal - FPaid;
  if not (((Result > 0) and (FTotal > 0)) or ((Result < 0) and (FTotal < 0))) then
    Result := 0;
end;

procedure TReceipt.RaiseDoubt(const Happened: string);
begin
  FIsInDoubt := True;
  FDoubt := Happened;
  raise DoubtOf(FCall, Happened);
end;

{ What the printer answers; empty when it cannot be asked. A question that fails leaves the call in doubt. }
function TReceipt.Answer(const Question: UnicodeString): UnicodeString;
begin
  Result := '';
  if Question <> '' then
    try
      Result := FSession.Variable(Question);
    except
      on Failure: ECall do
        RaiseDoubt('The printer does not say what it has done (' + Failure.Call + ': code ' + IntToStr(Failure.Code) + ').');
    end;
end;

function IsAmount(const Text: UnicodeString; Expected: Currency): Boolean;
var
  Form: TFormatSettings;
  Value: Currency;
begin
  Form := FormatSettings;
  Form.DecimalSeparator := '.';
  Form.ThousandSeparator := #0;
  Result := TryStrToCurr(Trim(string(Text)), Value, Form) and (Value = Expected);
end;

procedure TReceipt.Compare(const Question: UnicodeString; Expected: Currency; const What: string);
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

{ ---- Recovering ---- }

function Recovered(Verdict: TVerdict; const Sentence: string; const Number: UnicodeString = ''): TRecovery;
begin
  Result.Verdict := Verdict;
  Result.Sentence := Sentence;
  Result.Number := Number;
end;

function TReceipt.Recover: TRecovery;
begin
  if not FIsBegun then
    Exit(Recovered(vdNotSold, 'the receipt was not begun, or is cancelled'));
  if FNumberBefore = '' then
    Exit(Recovered(vdAskAPerson, 'this printer cannot be asked; look at its paper before this receipt is sold again'));
  try
    FSession.Reopen;
    Finish;
    Result := Judged;
  except
    on Failure: ECall do
      Result := Recovered(vdAskAPerson, 'the printer does not say what it has done; look at its paper before this receipt is sold again (' +
        Failure.Call + ': code ' + IntToStr(Failure.Code) + ')');
  end;
end;

{ Ends or cancels the receipt if it is open. Whether that worked, Judged sees. }
procedure TReceipt.Finish;
var
  IsPaid: Boolean;
begin
  if (FSession.Variable(FSession.Questions.LastReceipt) <> FNumberBefore) or
    (FSession.Variable(FSession.Questions.State) = FSession.Questions.Closed) then
    Exit;
  IsPaid := FIsFinished and IsAmount(FSession.Variable(FSession.Questions.Total), FTotal) and
    IsAmount(FSession.Variable(FSession.Questions.Due), 0);
  try
    if IsPaid then
    begin
      FSession.Start('paragonEnd');
      FSession.Check(Functions.paragonEnd(FSession.Device, 0, 0));
    end
    else
    begin
      FSession.Start('destroyParagon');
      FSession.Check(Functions.destroyParagon(FSession.Device, 0, nil));
    end;
  except
    on ECall do
      Exit;
  end;
end;

function TReceipt.Judged: TRecovery;
var
  Number, LastTotal: UnicodeString;
  IsClosed: Boolean;
  Open: string;
begin
  Number := FSession.Variable(FSession.Questions.LastReceipt);
  LastTotal := FSession.Variable(FSession.Questions.LastTotal);
  IsClosed := FSession.Variable(FSession.Questions.State) = FSession.Questions.Closed;
  if IsClosed and (Number = FNumberBefore) then
    Exit(Recovered(vdNotSold, 'receipt ' + string(Number) + ' is still the last one, and none is open; it can be sold again'));
  if IsClosed and IsAmount(LastTotal, FTotal) then
    Exit(Recovered(vdSold, 'receipt ' + string(Number) + ', total ' + string(MoneyText(FTotal)), Number));
  Open := '';
  if not IsClosed then
    Open := ', and one is open';
  Result := Recovered(vdAskAPerson, 'the printer''s last receipt is ' + string(Number) + ' with ' + string(LastTotal) + Open +
    '; the till sold ' + string(MoneyText(FTotal)) + ' after receipt ' + string(FNumberBefore) + '; look at the paper before it is sold again');
end;

function RecoveryText(const Recovery: TRecovery): string;
const
  Words: array[TVerdict] of string = ('sold: ', 'not sold: ', 'ask a person: ');
begin
  Result := Words[Recovery.Verdict] + Recovery.Sentence;
end;

end.
