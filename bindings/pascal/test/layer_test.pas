{ The layer where the demo receipt does not come: layer_test ADDRESS. Prints what is wrong, and ends with 1 then. }
program layer_test;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}
{$IFDEF MSWINDOWS}{$APPTYPE CONSOLE}{$ENDIF}

uses
  SysUtils, telvofm_codes, telvofm_failures, telvofm_library, telvofm_receipt, telvofm_session, telvofm_texts;

type
  TAction = procedure;

var
  Failures: Integer = 0;
  Session: TSession;
  Receipt: TReceipt;

procedure Check(Holds: Boolean; const What: string);
begin
  if Holds then
    Exit;
  WriteLn('wrong: ', What);
  Inc(Failures);
end;

procedure CheckRaises(Kind: ExceptClass; const Words: string; Action: TAction);
begin
  try
    Action;
    Check(False, 'no ' + Kind.ClassName + ' with ' + Words);
  except
    on Raised: Exception do
      Check((Raised is Kind) and (Pos(Words, Raised.Message) > 0),
        Raised.ClassName + ': ' + Raised.Message + ' instead of ' + Kind.ClassName + ' with ' + Words);
  end;
end;

{ ---- What must be refused; an action has no arguments ---- }

procedure EncodeTilde;
begin
  EncodeText('Piña');
end;

procedure EncodeBeyondTheFirstPlane;
begin
  EncodeText(UnicodeString('a') + WideChar($D83D) + WideChar($DE00));
end;

procedure EncodeHalfOfACharacter;
begin
  EncodeText(WideChar($D83D));
end;

{ Another way to write the letter s with a caron. }
procedure EncodeCombining;
begin
  EncodeText(UnicodeString('s') + WideChar($030C));
end;

procedure EncodeNul;
begin
  EncodeText(UnicodeString('Chlieb') + WideChar(0) + 'x');
end;

procedure EncodeFileNameWithNul;
begin
  EncodeFileName(UnicodeString('a') + WideChar(0) + '.txt');
end;

procedure RequireLessBits;
begin
  RequireBits(32);
end;

procedure OpenAnother;
begin
  TSession.Create('127.0.0.1:1').Free;
end;

procedure AskNonsense;
begin
  Session.Variable('NOTHING_LIKE_THAT');
end;

procedure PayTooFine;
begin
  Receipt.Pay(1, 2.675, '');
end;

procedure SellTooFine;
begin
  Receipt.Sell('Med', 1, 'A', 0.0001, 1, 'ks');
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

{ ---- Tests ---- }

{ The operator would compare the characters of their code pages. }
function SameBytes(const One, Another: RawByteString): Boolean;
begin
  Result := (Length(One) = Length(Another)) and CompareMem(PAnsiChar(One), PAnsiChar(Another), Length(One));
end;

procedure Texts;
var
  Every: RawByteString;
  Value: Integer;
begin
  SetLength(Every, 255);
  for Value := 1 to 255 do
    Every[Value] := AnsiChar(Value);
  Check(SameBytes(EncodeText(DecodeText(Every)), Every), '255 bytes and back');
  Check(DecodeText(RawByteString(#0)) = UnicodeString(WideChar(0)), 'a NUL is read');
  Check(SameBytes(EncodeText('šč žťľ€'), RawByteString(#$9A#$E8#$20#$9E#$9D#$BE#$80)), 'Windows-1250');
  Check(DecodeText(RawByteString(#$81#$83#$88#$90#$98)) = UnicodeString(WideChar($81)) + WideChar($83) + WideChar($88) +
    WideChar($90) + WideChar($98), 'open bytes');
  Check(EncodeText('') = '', 'an empty text');
  CheckRaises(EText, 'U+00F1 at position 2', EncodeTilde);
  CheckRaises(EText, 'U+1F600 at position 1', EncodeBeyondTheFirstPlane);
  CheckRaises(EText, 'U+D83D at position 0', EncodeHalfOfACharacter);
  CheckRaises(EText, 'U+030C at position 1', EncodeCombining);
  CheckRaises(EText, 'NUL at position 6', EncodeNul);
end;

procedure Amounts;
begin
  Check(MoneyText(12.5) = '12.50', 'money');
  Check(MoneyText(-0.05) = '-0.05', 'less than nothing');
  Check(MoneyText(0) = '0.00', 'nothing');
  Check(MoneyText(1000000) = '1000000.00', 'much');
  Check(QuantityText(0.125) = '0.125', 'a quantity');
end;

procedure CheckFailure(Code: Integer; IsSlow: Boolean; Kind: ExceptClass; Executed: TExecuted);
var
  Failure: ECall;
begin
  Failure := FailureOf('itemSale_str', Code, IsSlow);
  try
    Check((Failure is Kind) and (Failure.Executed = Executed), Failure.Message);
    Check(Pos('itemSale_str: code ' + IntToStr(Code) + ' (', Failure.Message) = 1, Failure.Message);
  finally
    Failure.Free;
  end;
end;

procedure FailuresOfCalls;
begin
  CheckFailure(26, False, ERefused, exNo);
  CheckFailure(32, True, EOutcomeUnknown, exUnknown);
  CheckFailure(-10201, False, EOutcomeUnknown, exUnknown);
  CheckFailure(-10202, False, EOutcomeUnknown, exUnknown);
  CheckFailure(64, False, EOutcomeUnknown, exUnknown);
  CheckFailure(-77, False, EOutcomeUnknown, exUnknown);
  CheckFailure(-1, True, ENotExecuted, exNo);
  CheckRaises(ELibrary, '32 bits; compile it for the 64-bit platform', RequireLessBits);
end;

function WithOneItem: TReceipt;
begin
  Result := TReceipt.Create(Session);
  Result.BeginReceipt;
  Result.Sell('Žemľa', 0.25, 'A', 1, 0.25, 'ks');
end;

function Occurrences(const Part, Text: UnicodeString): Integer;
var
  Rest: UnicodeString;
begin
  Result := 0;
  Rest := Text;
  while Pos(Part, Rest) > 0 do
  begin
    Inc(Result);
    Delete(Rest, 1, Pos(Part, Rest));
  end;
end;

procedure OpenSession;
var
  Number: Integer;
  Header, Id, FileName: RawByteString;
  Data: IResultData;
begin
  CheckRaises(EInvalidOpException, 'one at a time; free it first', OpenAnother);
  Check(not Session.BeginDay, 'a new day whose acknowledge is lost');
  Check(not Session.BeginDay, 'a day that is open');
  Header := EncodeText('Potraviny Šťastný');
  Session.Start('setHeader');
  Session.Check(Functions.setHeader(Session.Device, '0000', 1, PAnsiChar(Header)));
  Id := EncodeText('ž');
  Session.Start('freeID');
  Session.Check(Functions.freeID(Session.Device, True, PAnsiChar(Id)));
  Session.Start('printReport');
  Session.Check(Functions.printReport(Session.Device, 'X', 1));
  CheckRaises(ERefused, 'getVariable', AskNonsense);
  for Number := 1 to 3 do
  begin
    Receipt := WithOneItem;
    Receipt.Pay(1, 0.25, 'Hotovosť');
    Check(Receipt.EndReceipt = UnicodeString(IntToStr(Number)), 'receipt ' + IntToStr(Number));
    Receipt.Free;
  end;
  Check(Occurrences('Žemľa', Session.Journal) = 3, 'three items in the journal');
  Check(Pos(UnicodeString('Receipt 3'), Session.LastReceipt) > 0, 'the last receipt');
  FileName := EncodeFileName('žurnál.txt');
  Session.Start('getJournal_str_tofile');
  Session.Check(Functions.getJournal_str_tofile(Session.Device, PAnsiChar(FileName)));
  CheckRaises(EText, 'NUL at position 1', EncodeFileNameWithNul);
  Data := Session.NewResult;
  Session.Start('getJournalStructZ_ResultObject');
  Session.Check(Functions.getJournalStructZ_ResultObject(Session.Device, 2, 2, Data.Target));
  Check(Pos(UnicodeString('Receipt 2'), Data.Text) > 0, 'the second receipt');
  Session.Start('printReport');
  Session.Check(Functions.printReport(Session.Device, 'Z', 1));
  Check(Session.BeginDay, 'a new day');
end;

procedure CheckInterrupted(const NumberBefore: UnicodeString; Total: Currency; Verdict: TVerdict; const Number: UnicodeString);
var
  Recovery: TRecovery;
begin
  Receipt := TReceipt.CreateInterrupted(Session, NumberBefore, Total);
  Recovery := Receipt.Recover;
  Check((Recovery.Verdict = Verdict) and (Recovery.Number = Number), RecoveryText(Recovery));
  Receipt.Free;
end;

procedure Recovering;
var
  Left: TReceipt;
  Recovery: TRecovery;
begin
  Receipt := WithOneItem;
  Receipt.Pay(1, 0.25, 'Hotovosť');
  CheckRaises(EOutcomeUnknown, 'last receipt is still 3', EndIt);
  Recovery := Receipt.Recover;
  Check((Recovery.Verdict = vdSold) and (Recovery.Number = '4'), 'a receipt whose end was forgotten, behind its like');
  Receipt.Free;
  Receipt := TReceipt.Create(Session);
  Receipt.BeginReceipt;
  Check(Receipt.Recover.Verdict = vdNotSold, 'a receipt without a line');
  Receipt.Free;

  Receipt := WithOneItem;
  CheckRaises(EAmount, 'more than 2 decimals', PayTooFine);
  CheckRaises(EAmount, 'more than 3 decimals', SellTooFine);
  CheckRaises(EAmount, 'say the amount', PayNothing);
  CheckRaises(ERefused, 'itemSale_str', SellAtNoRate); { and it goes on }
  Receipt.Total := Receipt.Total + 1;
  CheckRaises(EOutcomeUnknown, 'the total is "0.25", for the till 1.25', PayMore);
  CheckRaises(EOutcomeUnknown, 'for the till 1.25', SellHoney);
  Check(Receipt.Recover.Verdict = vdNotSold, 'a receipt of another total');
  Check(Receipt.Recover.Verdict = vdNotSold, 'asked again');
  Receipt.Free;

  Left := WithOneItem;
  Receipt := TReceipt.Create(Session);
  CheckRaises(ERefused, 'paragonBegin', BeginAgain);
  Check((Receipt.Recover.Verdict = vdNotSold) and (Session.Variable('STATE') = 'open'), 'a receipt that was not begun');
  Receipt.Free;
  CheckInterrupted(Left.NumberBefore, 0.25, vdNotSold, '');
  Left.Free;
  CheckInterrupted('2', 0.25, vdSold, '4');
  CheckInterrupted('1', 7, vdAskAPerson, '');
end;

begin
  FormatSettings.DecimalSeparator := ',';
  Texts;
  Amounts;
  FailuresOfCalls;
  Session := TSession.Create(UnicodeString(ParamStr(1)));
  try
    OpenSession;
    Recovering;
  finally
    Session.Free;
  end;
  TSession.Create(UnicodeString(ParamStr(1))).Free;
  ExitCode := Ord(Failures > 0);
end.
