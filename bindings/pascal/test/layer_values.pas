{ What the layer makes of characters, amounts and codes, without a printer. }
unit layer_values;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}

interface

procedure TestValues;

implementation

uses
  SysUtils, checking, telvofm_codes, telvofm_failures, telvofm_library, telvofm_texts;

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
  CheckRaises(EText, 'NUL at position 1', EncodeFileNameWithNul);
end;

procedure Amounts;
begin
  Check(MoneyText(12.5) = '12.50', 'money');
  Check(MoneyText(-0.05) = '-0.05', 'less than nothing');
  Check(MoneyText(0) = '0.00', 'nothing');
  Check(MoneyText(1000000) = '1000000.00', 'much');
  Check(QuantityText(0.125) = '0.125', 'a quantity');
  Check(MoneyText(2.50004) = '2.50', 'a Currency has no more than four decimals, which the language rounds to');
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

procedure TestValues;
begin
  Texts;
  Amounts;
  FailuresOfCalls;
end;

end.
