{ What the tests of the layer have in common: they print what is wrong and count it. }
unit checking;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}

interface

uses
  SysUtils;

type
  TAction = procedure;

var
  Failures: Integer = 0;

procedure Check(Holds: Boolean; const What: string);

{ Whether the action raises this kind, with these words in the sentence. }
procedure CheckRaises(Kind: ExceptClass; const Words: string; Action: TAction);

implementation

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

end.
