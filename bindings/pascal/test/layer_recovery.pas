{ What has become of a receipt, as the layer finds out. }
unit layer_recovery;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}

interface

uses
  telvofm_session;

procedure TestRecovery(Opened: TSession);

{ With sessions of its own at this address. }
procedure TestRecoveryInAnotherSession(const Address: UnicodeString);

implementation

uses
  SysUtils, checking, layer_session, telvofm_failures, telvofm_library, telvofm_receipt, telvofm_recovery, telvofm_texts;

var
  Session: TSession;
  Receipt: TReceipt;

{ ---- What must be refused; an action has no arguments ---- }

procedure PayTooFine;
begin
  Receipt.Pay(1, 1.005, '');
end;

procedure SellTooFine;
begin
  Receipt.Sell('Med', 1, 'A', 0.1255, 1, 'ks');
end;

procedure SellAtAPriceTooFine;
begin
  Receipt.Sell('Med', 1, 'A', 1, 8.333, 'ks');
end;

procedure PayAlmostNothing;
begin
  Receipt.Pay(1, -0.0001, '');
end;

procedure PayNothing;
begin
  Receipt.Pay(1, 0, '');
end;

procedure SellAtNoRate;
begin
  Receipt.Sell('Med', 1, 'H', 1, 1, 'ks');
end;

procedure SellHoney;
begin
  Receipt.Sell('Med', 1, 'A', 1, 1, 'ks');
end;

procedure PayMore;
begin
  Receipt.Pay(1, 1.25, '');
end;

procedure EndIt;
begin
  Receipt.EndReceipt;
end;

procedure BeginAgain;
begin
  Receipt.BeginReceipt;
end;

procedure CancelIt;
begin
  Receipt.Cancel;
end;

procedure CorrectTooFine;
begin
  Receipt.Total := 23.595;
end;

procedure InterruptTooFine;
begin
  TReceipt.CreateInterrupted(Session, '1', 23.595);
end;

{ ---- Tests ---- }

procedure CheckInterrupted(const NumberBefore: UnicodeString; Total: Currency; Verdict: TVerdict; const Number: UnicodeString);
var
  Recovery: TRecovery;
begin
  Receipt := TReceipt.CreateInterrupted(Session, NumberBefore, Total);
  Recovery := Receipt.Recover;
  Check((Recovery.Verdict = Verdict) and (Recovery.Number = Number), RecoveryText(Recovery));
  Receipt.Free;
end;

procedure OfOneSession;
var
  Left: TReceipt;
  Recovery: TRecovery;
begin
  Receipt := WithOneItem(Session);
  Receipt.Pay(1, 0.25, 'Hotovosť');
  CheckRaises(EOutcomeUnknown, 'last receipt is still 3', EndIt);
  Recovery := Receipt.Recover;
  Check((Recovery.Verdict = vdSold) and (Recovery.Number = '4'), 'a receipt whose end was forgotten, behind its like');
  Receipt.Free;
  Receipt := TReceipt.Create(Session);
  Receipt.BeginReceipt;
  Check(Receipt.Recover.Verdict = vdNotSold, 'a receipt without a line');
  Receipt.BeginReceipt;
  CheckRaises(ERefused, 'paragonEnd', EndIt);
  Check(Receipt.Recover.Verdict = vdNotSold, 'one whose end was refused');
  Receipt.BeginReceipt;
  Left := Receipt;
  CheckInterrupted(Left.NumberBefore, 0, vdNotSold, '');
  Receipt := Left;
  Receipt.Free;

  Receipt := WithOneItem(Session);
  CheckRaises(EAmount, '1.005 has more than 2 decimals; round it first', PayTooFine);
  CheckRaises(EAmount, '0.1255 has more than 3 decimals; round it first', SellTooFine);
  CheckRaises(EAmount, '8.333 has more than 2 decimals; round it first', SellAtAPriceTooFine);
  CheckRaises(EAmount, '-0.0001 has more than 2 decimals', PayAlmostNothing);
  CheckRaises(EAmount, 'say the amount', PayNothing);
  CheckRaises(ERefused, 'itemSale_str', SellAtNoRate); { and it goes on }
  CheckRaises(EAmount, '23.595 has more than 2 decimals; round it first', CorrectTooFine);
  CheckRaises(EAmount, '23.595 has more than 2 decimals; round it first', InterruptTooFine);
  Receipt.Total := Receipt.Total + 1;
  CheckRaises(EOutcomeUnknown, 'the total is "0.25", for the till 1.25', PayMore);
  CheckRaises(EOutcomeUnknown, 'for the till 1.25', SellHoney);
  CheckRaises(EOutcomeUnknown, 'for the till 1.25', BeginAgain);
  Check(Receipt.Recover.Verdict = vdNotSold, 'a receipt of another total');
  Check(Receipt.Recover.Verdict = vdNotSold, 'asked again');
  Receipt.BeginReceipt;
  Check(Receipt.Total = 0, 'the same object begins afresh');
  SellHoney;
  Receipt.Cancel;
  CheckRaises(ENotExecuted, 'is over', CancelIt);
  Receipt.Free;

  Left := WithOneItem(Session);
  Receipt := TReceipt.Create(Session);
  CheckRaises(ENotExecuted, 'was not begun', CancelIt);
  CheckRaises(ENotExecuted, 'paragonBegin: code -1 (notOpen): Another receipt is open', BeginAgain);
  CheckRaises(ENotExecuted, 'or another one may be open. It was not carried out. To cancel another one call destroyParagon through the ' +
    'session.', CancelIt);
  Check((Receipt.Recover.Verdict = vdAskAPerson) and (Session.Variable('STATE') = 'open'), 'a receipt behind one that was open');
  Receipt.Free;
  CheckInterrupted(Left.NumberBefore, 0.25, vdNotSold, '');
  Left.Free;
  CheckInterrupted('2', 0.25, vdSold, '4');
  CheckInterrupted('1', 7, vdAskAPerson, '');
end;

procedure TestRecovery(Opened: TSession);
begin
  Session := Opened;
  OfOneSession;
end;

{ A session that is freed leaves the connection of the next one alone. }
procedure TestRecoveryInAnotherSession(const Address: UnicodeString);
var
  Left: TReceipt;
begin
  Session := TSession.Create(Address);
  Left := WithOneItem(Session);
  Session.Free;
  Check(Left.Recover.Verdict = vdAskAPerson, 'a receipt whose session is freed');
  Session := TSession.Create(Address);
  Functions.setAutoTwoLineItem(True); { is forgotten when a connection is opened }
  Receipt := Left;
  CheckRaises(ENotExecuted, 'code -1 (notOpen): This session is closed.', SellHoney);
  CheckRaises(ENotExecuted, 'This session is closed.', CancelIt);
  Check((Left.Recover.Verdict = vdAskAPerson) and (Pos('the session of this receipt is closed', Left.Recover.Sentence) = 1),
    RecoveryText(Left.Recover));
  Check(Functions.isAutoTwoLineItem(), 'the connection of another session');
  Check(Session.Variable('STATE') = 'open', 'the receipt of a session that was freed');
  CheckInterrupted(Left.NumberBefore, 0.25, vdNotSold, '');
  Left.Free;
  Session.Free;
end;

end.
