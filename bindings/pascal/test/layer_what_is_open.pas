{ What is sent goes into whatever receipt the printer has open: the layer sends nothing for one that is not. }
unit layer_what_is_open;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}

interface

uses
  telvofm_session;

procedure TestWhatIsOpen(Opened: TSession);

{ With sessions of its own at this address. }
procedure TestPrinterThatCannotBeAsked(const Address: UnicodeString);

implementation

uses
  SysUtils, checking, layer_session, telvofm_failures, telvofm_library, telvofm_questions, telvofm_receipt, telvofm_recovery, telvofm_texts;

var
  Session: TSession;
  Receipt: TReceipt;
  AddressOfPrinter: UnicodeString;

{ ---- What must be refused; an action has no arguments ---- }

procedure SellHoney;
begin
  Receipt.Sell('Med', 1, 'A', 1, 1, 'ks');
end;

procedure TakeHoneyBack;
begin
  Receipt.Void('Med', 1, 'A', 1, 1, 'ks');
end;

procedure GiveDiscount;
begin
  Receipt.Discount('Zľava', 1, 'A');
end;

procedure PayOne;
begin
  Receipt.Pay(1, 1, '');
end;

procedure EndIt;
begin
  Receipt.EndReceipt;
end;

procedure BeginIt;
begin
  Receipt.BeginReceipt;
end;

procedure CancelIt;
begin
  Receipt.Cancel;
end;

procedure OpenWithSomeNames;
var
  Questions: TQuestions;
begin
  Questions := UsualQuestions;
  Questions.Due := '';
  TSession.Create(AddressOfPrinter, 1, Questions).Free;
end;

{ ---- Tests ---- }

function SizeOfFile(const Name: string): Int64;
var
  Found: TSearchRec;
begin
  Result := -1;
  if FindFirst(Name, faAnyFile, Found) = 0 then
  begin
    Result := Found.Size;
    FindClose(Found);
  end;
end;

{ Nothing goes into it, and nothing is sent. }
procedure TakesNothing(One: TReceipt; const What: string);
begin
  Receipt := One;
  Functions.setRawLogginOn('nothing.log');
  CheckRaises(ENotExecuted, 'This receipt is not open', SellHoney);
  CheckRaises(ENotExecuted, 'This receipt is not open', TakeHoneyBack);
  CheckRaises(ENotExecuted, 'This receipt is not open', GiveDiscount);
  CheckRaises(ENotExecuted, 'This receipt is not open', PayOne);
  CheckRaises(ENotExecuted, 'This receipt is not open', EndIt);
  Functions.seRawLogginOff();
  Check(SizeOfFile('nothing.log') = 0, 'something is sent for ' + What);
end;

procedure TestWhatIsOpen(Opened: TSession);
var
  Open, Other, Next: TReceipt;
begin
  Session := Opened;
  Open := WithOneItem(Session);
  Other := TReceipt.Create(Session);
  TakesNothing(Other, 'a receipt that was not begun');
  CheckRaises(ENotExecuted, 'paragonBegin', BeginIt);
  TakesNothing(Other, 'one whose begin was refused');
  Other.Free;
  Receipt := Open;
  CheckRaises(ENotExecuted, 'This receipt is open already', BeginIt);
  Open.Sell('Med', 1, 'A', 1, 1, 'ks');
  Check(Session.Variable('TOTAL') = '1.25', 'what the receipt that was open has');
  Open.Cancel;
  TakesNothing(Open, 'one that is cancelled');
  Open.Free;

  Open := WithOneItem(Session);
  Session.Start('destroyParagon'); { past the object }
  Session.Check(Functions.destroyParagon(Session.Device, 0, nil));
  Next := WithOneItem(Session);
  TakesNothing(Open, 'one that another has followed');
  CheckRaises(ENotExecuted, 'or another one may be open', CancelIt);
  Check((Pos('another receipt was begun since', Open.Recover.Sentence) = 1) and (Session.Variable('STATE') = 'open'), 'the one that followed');
  Open.Free;
  Next.Cancel;

  Session.Start('printReport');
  Session.Check(Functions.printReport(Session.Device, 'Z', 1));
  Receipt := Next;
  CheckRaises(ERefused, 'paragonBegin', BeginIt); { no day is open, nor is a receipt }
  TakesNothing(Next, 'one that nobody has begun');
  Check(Next.Recover.Verdict = vdNotSold, 'one that was refused without a day');
  Check(Session.BeginDay, 'the day after');
  Next.Free;
end;

{ A printer that cannot be asked, and one that answers with an empty text, which is no answer. }
procedure TestPrinterThatCannotBeAsked(const Address: UnicodeString);
var
  Open, Other: TReceipt;
  Questions: TQuestions;
begin
  AddressOfPrinter := Address;
  CheckRaises(EArgumentException, 'give all of them, or NoQuestions', OpenWithSomeNames);
  Session := TSession.Create(Address, 1, NoQuestions);
  Open := WithOneItem(Session);
  Other := TReceipt.Create(Session);
  Receipt := Other;
  CheckRaises(ERefused, 'paragonBegin', BeginIt);
  TakesNothing(Other, 'one behind another, for all that is known');
  CheckRaises(ENotExecuted, 'or another one may be open', CancelIt);
  Other.Free;
  Open.Pay(1, 0.25, '');
  Receipt := Open;
  CheckRaises(EAmount, 'Nothing is left to pay', PayOne);
  Check(Open.EndReceipt = '', 'the number of a receipt that nobody knows');
  TakesNothing(Open, 'one that is ended');
  CheckRaises(ENotExecuted, 'is over', CancelIt);
  Check(Open.Recover.Verdict = vdAskAPerson, 'a printer that cannot be asked');
  Open.Free;
  Session.Free;

  Questions := UsualQuestions;
  Questions.LastReceipt := 'VAT_H'; { no rate }
  Session := TSession.Create(Address, 1, Questions);
  Receipt := TReceipt.Create(Session);
  CheckRaises(ENotExecuted, 'What the printer answers for VAT_H is not one line of text', BeginIt);
  Receipt.Free;
  Session.Free;
end;

end.
