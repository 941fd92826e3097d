{ A session: calls, texts, results, and what is refused before anything is sent. }
unit layer_session;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}

interface

uses
  telvofm_receipt, telvofm_session;

procedure TestSession(Opened: TSession);

{ A new receipt with one item of 0.25. }
function WithOneItem(Session: TSession): TReceipt;

implementation

uses
  SysUtils, checking, telvofm_failures, telvofm_library, telvofm_texts;

var
  Session: TSession;
  Receipt: TReceipt;

function WithOneItem(Session: TSession): TReceipt;
begin
  Result := TReceipt.Create(Session);
  Result.BeginReceipt;
  Result.Sell('Žemľa', 0.25, 'A', 1, 0.25, 'ks');
end;

{ ---- What must be refused; an action has no arguments ---- }

procedure OpenBesideIt;
begin
  TSession.Create('127.0.0.1:1').Free;
end;

procedure AskNonsense;
begin
  Session.Variable('NOTHING_LIKE_THAT');
end;

procedure AskWithTilde;
begin
  Session.Variable('ñ');
end;

{ The result object is there when the text is refused. }
procedure ReadWithTilde;
var
  Data: IResultData;
begin
  Data := Session.NewResult;
  Session.Start('getVariableResultObject');
  Session.Check(Functions.getVariableResultObject(Session.Device, PAnsiChar(EncodeText('ñ')), Data.Target));
end;

procedure SellWithTilde;
begin
  Receipt.Sell('Piña', 1, 'A', 1, 1, 'ks');
end;

procedure FillBuffer;
var
  Buffer: array[0..0] of AnsiChar;
begin
  Session.Start('getJournal');
  Session.Check(BufferFunctions.getJournal(Session.Device, @Buffer, 1));
end;

{ ---- Tests ---- }

{ Any byte but 0 is true, as other languages and compilers have it. }
procedure Truths;
const
  Bytes: array[0..3] of Byte = (1, 2, 255, 0);
var
  Id: RawByteString;
  Index: Integer;
begin
  Id := EncodeText('ščžťľ');
  for Index := Low(Bytes) to High(Bytes) do
  begin
    Session.Start('freeID');
    Session.Check(Functions.freeID(Session.Device, Boolean(Bytes[Index]), PAnsiChar(Id)));
    Functions.setAutoTwoLineItem(Boolean(Bytes[Index]));
    Check(Ord(Functions.isAutoTwoLineItem()) = Ord(Bytes[Index] <> 0), 'the truth ' + IntToStr(Bytes[Index]));
  end;
end;

{ What fails before anything is sent; the result objects are counted from outside. }
procedure Refusals;
begin
  CheckRaises(EText, 'U+00F1 at position 0', AskWithTilde);
  CheckRaises(EText, 'U+00F1 at position 0', ReadWithTilde);
  Receipt := TReceipt.Create(Session);
  CheckRaises(EText, 'U+00F1 at position 2', SellWithTilde);
  Receipt.Free;
  CheckRaises(EArgumentException, 'getJournal fills a buffer, and one that is too short ends the process', FillBuffer);
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

procedure Calls;
var
  Number: Integer;
  Header, FileName: RawByteString;
  Data: IResultData;
begin
  CheckRaises(EInvalidOpException, 'one at a time; free it first', OpenBesideIt);
  Check(not Session.BeginDay, 'a new day whose acknowledge is lost');
  Check(not Session.BeginDay, 'a day that is open');
  Header := EncodeText('Potraviny Šťastný');
  Session.Start('setHeader');
  Session.Check(Functions.setHeader(Session.Device, '0000', 1, PAnsiChar(Header)));
  Truths;
  Refusals;
  Session.Start('printReport');
  Session.Check(Functions.printReport(Session.Device, 'X', 1));
  CheckRaises(ERefused, 'getVariable', AskNonsense);
  for Number := 1 to 3 do
  begin
    Receipt := WithOneItem(Session);
    Receipt.Pay(1, 0.25, 'Hotovosť');
    Check(Receipt.EndReceipt = UnicodeString(IntToStr(Number)), 'receipt ' + IntToStr(Number));
    Receipt.Free;
  end;
  Check(Occurrences('Žemľa', Session.Journal) = 3, 'three items in the journal');
  Check(Pos(UnicodeString('Receipt 3'), Session.LastReceipt) > 0, 'the last receipt');
  FileName := EncodeFileName('žurnál.txt');
  Session.Start('getJournal_str_tofile');
  Session.Check(Functions.getJournal_str_tofile(Session.Device, PAnsiChar(FileName)));
  Data := Session.NewResult;
  Session.Start('getJournalStructZ_ResultObject');
  Session.Check(Functions.getJournalStructZ_ResultObject(Session.Device, 2, 2, Data.Target));
  Check(Pos(UnicodeString('Receipt 2'), Data.Text) > 0, 'the second receipt');
  Session.Start('printReport');
  Session.Check(Functions.printReport(Session.Device, 'Z', 1));
  Check(Session.BeginDay, 'a new day');
end;

procedure TestSession(Opened: TSession);
begin
  Session := Opened;
  Calls;
end;

end.
