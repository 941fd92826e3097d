{ Texts and amounts as the library takes them: bytes in Windows-1250. There is no other conversion in these units. }
unit telvofm_texts;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}

interface

{ The bytes of a text; PAnsiChar() of them is what the raw layer takes, as long as they live. Raises EText for a NUL and for any
  character that Windows-1250 lacks; says which and where. }
function EncodeText(const Text: UnicodeString): RawByteString;

{ The text of any bytes: all 256 have a character, and EncodeText gives back the same bytes, but for a NUL. }
function DecodeText(const Bytes: RawByteString): UnicodeString;

{ The name of a file, which is the system's matter and not the printer's: in UTF-8 on Linux, in the system's own code page on
  Windows. Raises EText for a NUL and for what that code page lacks. }
function EncodeFileName(const Name: UnicodeString): RawByteString;

{ With exactly 2 decimals and a point. Nothing is rounded: raises EAmount for what has more. }
function MoneyText(Amount: Currency): RawByteString;

{ With exactly 3 decimals and a point. Nothing is rounded: raises EAmount for what has more. }
function QuantityText(Amount: Currency): RawByteString;

{ An amount paid, as money. Raises EAmount for zero too: for some printers it means all that is due. }
function PaymentText(Amount: Currency): RawByteString;

type
  { What a receipt's line says of its item, as the library takes it; the record owns the texts while the call runs. }
  TTextsOfItem = record
    Name, Total, Vat, Quantity, UnitPrice, UnitName: RawByteString;
  end;

{ Raises EText and EAmount. }
function TextsOfItem(const Name: UnicodeString; Total: Currency; Vat: WideChar; Quantity, UnitPrice: Currency;
  const UnitName: UnicodeString): TTextsOfItem;

{ Whether a text of the printer's is this amount. }
function IsAmount(const Text: UnicodeString; Expected: Currency): Boolean;

implementation

uses
  SysUtils, telvofm_failures, telvofm_windows_1250;

var
  ByteOf: array[WideChar] of Byte; { 0 for what Windows-1250 lacks }

procedure FillByteOf;
var
  Value: Integer;
begin
  for Value := 1 to $7F do
    ByteOf[WideChar(Value)] := Value;
  for Value := $80 to $FF do
    ByteOf[WideChar(UpperHalf[Value])] := Value;
end;

{ Characters beyond the first 65536 are two places of the string. }
function CharacterAt(const Text: UnicodeString; Index: Integer): Cardinal;
begin
  Result := Ord(Text[Index]);
  if (Result and $FC00 = $D800) and (Index < Length(Text)) and (Ord(Text[Index + 1]) and $FC00 = $DC00) then
    Result := $10000 + (Result and $3FF) shl 10 + Cardinal(Ord(Text[Index + 1]) and $3FF);
end;

procedure Refuse(const Text: UnicodeString; Index: Integer; const CodePage: string);
begin
  if Text[Index] = #0 then
    raise EText.Create(Format('The text has a NUL at position %d, where the printer''s text would end; take it out.', [Index - 1]),
      Index - 1);
  raise EText.Create(Format('The text has the character U+%.4x at position %d, which %s lacks; write it in another way.',
    [CharacterAt(Text, Index), Index - 1, CodePage]), Index - 1);
end;

function EncodeText(const Text: UnicodeString): RawByteString;
var
  Index: Integer;
  Target: PAnsiChar;
begin
  SetLength(Result, Length(Text));
  Target := PAnsiChar(Result);
  for Index := 1 to Length(Text) do
  begin
    if ByteOf[Text[Index]] = 0 then
      Refuse(Text, Index, 'Windows-1250');
    Target[Index - 1] := AnsiChar(ByteOf[Text[Index]]);
  end;
  SetCodePage(Result, 1250, False); { what they are, for whoever makes another string of them }
end;

function DecodeText(const Bytes: RawByteString): UnicodeString;
var
  Index: Integer;
  Value: Byte;
begin
  SetLength(Result, Length(Bytes));
  for Index := 1 to Length(Bytes) do
  begin
    Value := Ord(Bytes[Index]);
    if Value < $80 then
      Result[Index] := WideChar(Value)
    else
      Result[Index] := WideChar(UpperHalf[Value]);
  end;
end;

function EncodeFileName(const Name: UnicodeString): RawByteString;
var
  Index: Integer;
  Read: UnicodeString;
begin
  {$IFDEF MSWINDOWS}
  Result := AnsiString(Name);
  Read := UnicodeString(AnsiString(Name)); { with something similar in the place of what the code page lacks }
  {$ELSE}
  Result := UTF8Encode(Name);
  Read := Name;
  {$ENDIF}
  for Index := 1 to Length(Name) do
    if (Name[Index] = #0) or (Copy(Read, Index, 1) <> Name[Index]) then
      Refuse(Name, Index, 'the system''s code page');
end;

{ So many units of the last decimal. }
function Digits(Units: Int64; Decimals: Integer): string;
begin
  Result := Format('%.*d', [Decimals + 1, Abs(Units)]);
  Insert('.', Result, Length(Result) - Decimals + 1);
  if Units < 0 then
    Result := '-' + Result;
end;

procedure RefuseDecimals(TenThousandths: Int64; Decimals: Integer);
var
  Written: string;
begin
  Written := Digits(TenThousandths, 4);
  while Written[Length(Written)] = '0' do
    SetLength(Written, Length(Written) - 1);
  raise EAmount.Create(Format('%s has more than %d decimals; round it first.', [Written, Decimals]));
end;

function FixedText(Amount: Currency; Decimals: Integer): RawByteString;
const
  Units: array[2..3] of Int64 = (100, 10); { a Currency counts ten-thousandths }
var
  TenThousandths: Int64;
begin
  TenThousandths := PInt64(@Amount)^;
  if TenThousandths mod Units[Decimals] <> 0 then
    RefuseDecimals(TenThousandths, Decimals);
  Result := EncodeText(UnicodeString(Digits(TenThousandths div Units[Decimals], Decimals)));
end;

function MoneyText(Amount: Currency): RawByteString;
begin
  Result := FixedText(Amount, 2);
end;

function QuantityText(Amount: Currency): RawByteString;
begin
  Result := FixedText(Amount, 3);
end;

function PaymentText(Amount: Currency): RawByteString;
begin
  if Amount = 0 then
    raise EAmount.Create('A payment of 0 can mean all that is due; say the amount.');
  Result := MoneyText(Amount);
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

initialization
  FillByteOf;

end.
