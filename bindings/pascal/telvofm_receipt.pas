{ A receipt, from its beginning to its end, and what happened to it when something failed. }
unit telvofm_receipt;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}

interface

uses
  telvofm_calls, telvofm_recovery, telvofm_session;

type
  { A receipt that compares its own total with the printer's, because a request whose answer was lost is sent again, may be
    carried out twice, and returns 0. After any failure Recover tells what happened.

    What is sent raises ERefused (the receipt goes on), EOutcomeUnknown (it takes nothing more) or ENotExecuted, each an ECall. Texts go
    out in Windows-1250: EText names a character that it lacks. EAmount is for amounts with more decimals than money (2) or quantities
    (3) have. After these two nothing was sent. Nor is anything, and ENotExecuted is raised, when BeginReceipt has not worked, when the
    receipt is over, and when another object of the session has begun one since: what is open then is not this one. }
  TReceipt = class
  private
    FCalls: TCalls;
    FIsBegun: Boolean; { or may be }
    FIsCompared: Boolean; { its total with the printer's, before the first payment }
    FIsFinished: Boolean; { as far as the till goes: paid in full, refused or not, or told to end }
    FIsCertain: Boolean; { what has become of it }
    FOutcome: TRecovery;
    FTotal, FPaid: Currency;
    function Session: TSession;
    function NumberBeforeThisOne: UnicodeString;
    procedure Line(Value: Currency; Code: Integer);
    procedure Count(Amount: Currency);
    procedure SetTotal(Total: Currency);
    procedure StartAfresh;
    procedure Finish(const Outcome: TRecovery);
    function Due(Amount: Currency = 0): Currency;
  public
    { One that is not begun yet; sends nothing. }
    constructor Create(Session: TSession);
    { One that a till left when it was switched off: call Recover on it. The number of the last receipt before it, and its total, are
      those that the till kept; it counts as paid in full, unless that is 0. Raises EAmount. }
    constructor CreateInterrupted(Session: TSession; const NumberBefore: UnicodeString; Total: Currency);
    { Sends nothing; whatever is open stays so. }
    destructor Destroy; override;

    { Opens the receipt; what the numbers mean is the printer's matter. Raises ENotExecuted also while any receipt is open, and when
      the printer does not say whether one is; it is asked again over a new connection before, which forgets the settings and pictures
      of the session. Raises EOutcomeUnknown also while it is unknown what became of the receipt that was begun before with this
      object. After a failure call Recover before anything else: the printer may have opened it and refused the same request when it
      was sent again. }
    procedure BeginReceipt(SaleType: Integer = 1; Commission: Integer = 0; ReceiptType: Integer = 0; Recapitulation: Integer = 1;
      Picture: Integer = 0);
    { Sells an item: Total for Quantity of UnitName at UnitPrice each, under the printer's letter of a VAT rate. The library sends no
      more than 3 bytes of UnitName. }
    procedure Sell(const Name: UnicodeString; Total: Currency; Vat: WideChar; Quantity, UnitPrice: Currency;
      const UnitName: UnicodeString);
    { Takes an item of this receipt back, which was sold with the same arguments. }
    procedure Void(const Name: UnicodeString; Total: Currency; Vat: WideChar; Quantity, UnitPrice: Currency;
      const UnitName: UnicodeString);
    { A discount of a sum on the item that was sold last; Operation is the printer's number for that. }
    procedure Discount(const Description: UnicodeString; Amount: Currency; Vat: WideChar; Operation: Integer = 0);
    { Takes a payment under the printer's payment type. More than is due is given back. The library sends no more than 10 bytes of
      Description. Raises EAmount also for 0 and when it is paid in full, and EOutcomeUnknown when the printer's total or what is due is
      not the till's. }
    procedure Pay(PaymentType: Integer; Amount: Currency; const Description: UnicodeString);
    { Ends the receipt and returns its number; an empty one if the printer cannot be asked. Picture is the printer's number of one, 0
      for none. Raises EOutcomeUnknown also when the printer's last receipt is not this one. }
    function EndReceipt(Picture: Integer = 0): UnicodeString;
    { Cancels the receipt; the printer prints the description. Raises ENotExecuted, too, when it was not begun, is over, or when
      what is open may be another one: that is left alone. Raises EOutcomeUnknown also when a receipt is open behind it, or another
      one is the last. }
    procedure Cancel(const Description: UnicodeString = '');

    { Asks the printer what has become of this receipt. One that is still open is ended when it is paid as it should be, and
      cancelled otherwise. Raises nothing for what the printer does, and may be called again: what is certain, as behind an EndReceipt
      or a Cancel that worked, stays as it was said, and the printer is not asked again. When the session is freed it asks nobody,
      whoever has opened another: a person has to look. }
    function Recover: TRecovery;

    { The last receipt's number before this one began; empty while it has not, or when the printer cannot be asked. }
    property NumberBefore: UnicodeString read NumberBeforeThisOne;
    { What is sold so far. Correct it after what went to the printer past this class. Raises EAmount. }
    property Total: Currency read FTotal write SetTotal;
    { What is paid so far. }
    property Paid: Currency read FPaid;
  end;

implementation

uses
  SysUtils, telvofm_failures, telvofm_library, telvofm_questions, telvofm_texts;

{ ---- Selling ---- }

constructor TReceipt.Create(Session: TSession);
begin
  inherited Create;
  FCalls := TCalls.Create(Session, 'paragonBegin');
end;

constructor TReceipt.CreateInterrupted(Session: TSession; const NumberBefore: UnicodeString; Total: Currency);
begin
  inherited Create;
  SetTotal(Total);
  FPaid := Total;
  FCalls := TCalls.Create(Session, 'Recover');
  FCalls.Doubt('The till was interrupted in this receipt.');
  FCalls.Expect(NumberBefore);
  FIsBegun := True;
  FIsFinished := Total <> 0; { a till that has kept no total says 0 }
end;

destructor TReceipt.Destroy;
begin
  FCalls.Free;
  inherited Destroy;
end;

function TReceipt.Session: TSession;
begin
  Result := FCalls.Session;
end;

function TReceipt.NumberBeforeThisOne: UnicodeString;
begin
  Result := FCalls.NumberBefore;
end;

procedure TReceipt.StartAfresh;
begin
  FCalls.Forget;
  FIsBegun := False;
  FIsCompared := False;
  FIsFinished := False;
  FIsCertain := False;
  FTotal := 0;
  FPaid := 0;
end;

procedure TReceipt.BeginReceipt(SaleType, Commission, ReceiptType, Recapitulation, Picture: Integer);
var
  LastNumber: UnicodeString;
begin
  FCalls.RequireNoDoubt;
  if not FCalls.IsOpen then
    StartAfresh;
  LastNumber := FCalls.NumberWhileNoneIsOpen;
  StartAfresh;
  FCalls.Expect(LastNumber);
  FIsBegun := True;
  try
    FCalls.Start('paragonBegin');
    FCalls.Check(Functions.paragonBegin(Session.Device, 0, SaleType, Commission, ReceiptType, Recapitulation, Picture));
  except
    on ENotExecuted do
    begin
      FIsBegun := False;
      raise;
    end;
  end;
  FCalls.Take;
end;

procedure TReceipt.Sell(const Name: UnicodeString; Total: Currency; Vat: WideChar; Quantity, UnitPrice: Currency;
  const UnitName: UnicodeString);
var
  Texts: TTextsOfItem;
begin
  Texts := TextsOfItem(Name, Total, Vat, Quantity, UnitPrice, UnitName);
  FCalls.RequireOpen('itemSale_str');
  FCalls.Start('itemSale_str');
  Line(Total, Functions.itemSale_str(Session.Device, 0, PAnsiChar(Texts.Name), PAnsiChar(Texts.Total), PAnsiChar(Texts.Vat),
    PAnsiChar(Texts.Quantity), PAnsiChar(Texts.UnitPrice), PAnsiChar(Texts.UnitName)));
end;

procedure TReceipt.Void(const Name: UnicodeString; Total: Currency; Vat: WideChar; Quantity, UnitPrice: Currency;
  const UnitName: UnicodeString);
var
  Texts: TTextsOfItem;
begin
  Texts := TextsOfItem(Name, Total, Vat, Quantity, UnitPrice, UnitName);
  FCalls.RequireOpen('itemVoid_str');
  FCalls.Start('itemVoid_str');
  Line(-Total, Functions.itemVoid_str(Session.Device, 0, PAnsiChar(Texts.Name), PAnsiChar(Texts.Total), PAnsiChar(Texts.Vat),
    PAnsiChar(Texts.Quantity), PAnsiChar(Texts.UnitPrice), PAnsiChar(Texts.UnitName), nil));
end;

procedure TReceipt.Discount(const Description: UnicodeString; Amount: Currency; Vat: WideChar; Operation: Integer);
var
  Words, Sum, Letter: RawByteString;
begin
  Words := EncodeText(Description);
  Sum := MoneyText(Amount);
  Letter := EncodeText(Vat);
  FCalls.RequireOpen('itemDiscount_str');
  FCalls.Start('itemDiscount_str');
  Line(-Amount, Functions.itemDiscount_str(Session.Device, 0, PAnsiChar(Words), Operation, PAnsiChar(Sum), PAnsiChar(Letter)));
end;

procedure TReceipt.Pay(PaymentType: Integer; Amount: Currency; const Description: UnicodeString);
var
  Sum, Part, NoExchange, Words: RawByteString;
begin
  Sum := MoneyText(FTotal);
  Part := PaymentText(Amount);
  NoExchange := EncodeText('0');
  Words := EncodeText(Description);
  FCalls.RequireOpen('payment_str');
  if (FPaid <> 0) and (Due = 0) then
    raise EAmount.Create('Nothing is left to pay.');
  FCalls.Start('payment_str');
  if not FIsCompared then
  begin
    FCalls.CompareAnswer(Session.Questions.Total, FTotal, 'the total');
    FIsCompared := True;
    FCalls.Start('payment_str');
  end;
  try
    FCalls.Check(Functions.payment_str(Session.Device, 0, PaymentType, PAnsiChar(Sum), PAnsiChar(Part), PAnsiChar(NoExchange), PAnsiChar(Words)));
  except
    on EOutcomeUnknown do
    begin
      Count(Amount); { as it was meant }
      raise;
    end;
    on ERefused do
    begin
      FIsFinished := Due(Amount) = 0; { it may have been taken before its refusal, which the printer's totals tell }
      FCalls.CompareAnswer(Session.Questions.Due, Due, 'what is due');
      raise;
    end;
  end;
  Count(Amount);
  FCalls.CompareAnswer(Session.Questions.Due, Due, 'what is due');
end;

function TReceipt.EndReceipt(Picture: Integer): UnicodeString;
begin
  FCalls.RequireOpen('paragonEnd');
  FIsFinished := True;
  FCalls.Start('paragonEnd');
  FCalls.Check(Functions.paragonEnd(Session.Device, 0, Picture));
  if not CanBeAsked(Session.Questions) then
  begin
    FCalls.Finish;
    Exit('');
  end;
  Result := FCalls.CompareEnded(FTotal);
  Finish(SoldAs(Result, FTotal));
end;

{ It is certain what has become of it. }
procedure TReceipt.Finish(const Outcome: TRecovery);
begin
  FOutcome := Outcome;
  FIsCertain := True;
  FCalls.Finish;
end;

procedure TReceipt.Cancel(const Description: UnicodeString);
var
  Words: RawByteString;
begin
  Words := EncodeText(Description);
  if not FIsBegun or FCalls.IsOver or not FCalls.HasBegunLast then
    raise NotOursFailure('destroyParagon');
  FCalls.Start('destroyParagon');
  FCalls.Check(Functions.destroyParagon(Session.Device, 0, PAnsiChar(Words)));
  FCalls.CompareCancelled;
  Finish(Recovered(vdNotSold, 'the receipt is cancelled'));
end;

{ ---- Counting ---- }

procedure TReceipt.Line(Value: Currency; Code: Integer);
begin
  FCalls.Check(Code);
  FTotal := FTotal + Value;
end;

procedure TReceipt.Count(Amount: Currency);
begin
  FPaid := FPaid + Amount;
  FIsFinished := Due = 0;
end;

procedure TReceipt.SetTotal(Total: Currency);
begin
  MoneyText(Total);
  FTotal := Total;
end;

{ What is left to pay, or to pay out, after this amount too; more than that is given back. }
function TReceipt.Due(Amount: Currency): Currency;
begin
  Result := FTotal - FPaid - Amount;
  if not (((Result > 0) and (FTotal > 0)) or ((Result < 0) and (FTotal < 0))) then
    Result := 0;
end;

{ ---- Recovering ---- }

function TReceipt.Recover: TRecovery;
begin
  if FIsCertain then
    Result := FOutcome
  else if FCalls.IsAnotherOpen then
    Result := Recovered(vdAskAPerson, 'another receipt is open, and this one was not begun; end that one with paragonEnd or cancel it ' +
      'with destroyParagon, called through the session, before this one is sold')
  else if not FIsBegun then
    Result := Recovered(vdNotSold, 'the receipt was not begun')
  else if not FCalls.IsSessionOpen then
    Result := Recovered(vdAskAPerson, 'the session of this receipt is closed; look at the printer''s paper before it is sold again, or ' +
      'recover it as an interrupted receipt of another session')
  else if not CanBeAsked(Session.Questions) or (NumberBefore = '') then
    Result := Recovered(vdAskAPerson, 'this printer cannot be asked; look at its paper before this receipt is sold again')
  else if not FCalls.HasBegunLast then
    Result := Recovered(vdAskAPerson, 'another receipt was begun since, and is left alone; look at the printer''s paper before this one is ' +
      'sold again')
  else
  begin
    Result := AskedRecovery(FCalls.Session, NumberBefore, FTotal, FPaid, FIsFinished);
    if Result.Verdict <> vdAskAPerson then
      Finish(Result);
  end;
end;

end.
