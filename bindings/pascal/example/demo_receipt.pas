{ Sells the demo receipt (../../demo_receipt.md), and finds out what happened when something fails.

    demo_receipt ADDRESS }
program demo_receipt;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}
{$IFDEF MSWINDOWS}{$APPTYPE CONSOLE}{$ENDIF}

uses
  SysUtils, telvofm_failures, telvofm_receipt, telvofm_recovery, telvofm_session, telvofm_texts;

procedure Fill(Receipt: TReceipt);
begin
  Receipt.BeginReceipt;
  Receipt.Sell('Chlieb šumavský', 12.50, 'A', 1.5, 8.33, 'kg');
  Receipt.Sell('Čučoriedková šťava', 3.90, 'B', 2, 1.95, 'fľa');
  Receipt.Sell('Žemľa', 2.50, 'A', 10, 0.25, 'ks');
  Receipt.Sell('Horúca čokoláda', 2.40, 'B', 2, 1.20, 'šál');
  Receipt.Sell('Med', 1.20, 'C', 3, 0.40, 'lyž');
  Receipt.Sell('Jogurt', 0.89, 'C', 1, 0.89, 'čaš');
  Receipt.Sell('Ťahaná štrúdľa', 3.00, 'A', 4, 0.75, 'ťah');
  Receipt.Discount('Zľava stálym zákazníkom', 0.30, 'A');
  Receipt.Void('Žemľa', 2.50, 'A', 10, 0.25, 'ks');
  Receipt.Pay(4, 5.00, 'Šaľa');
  Receipt.Pay(2, 5.00, 'Čip. karta');
  Receipt.Pay(3, 4.00, 'Poukážka');
  Receipt.Pay(1, 20.00, 'Hotovosť');
end;

{ Sells the receipt, says what has become of it, and returns the code that the program ends with. }
function Sell(Session: TSession): Integer;
const
  Codes: array[TVerdict] of Integer = (0, 1, 3);
var
  Receipt: TReceipt;
  Recovery: TRecovery;
  Number: UnicodeString;
begin
  Session.BeginDay;
  Receipt := TReceipt.Create(Session);
  try
    try
      Fill(Receipt);
      Number := Receipt.EndReceipt;
      WriteLn('sold: receipt ', string(Number), ', total ', string(MoneyText(Receipt.Total)));
      Result := 0;
    except
      on Failure: ECall do
      begin
        WriteLn('failed: ', Failure.Message);
        Recovery := Receipt.Recover;
        WriteLn(RecoveryText(Recovery));
        Result := Codes[Recovery.Verdict];
      end;
    end;
  finally
    Receipt.Free;
  end;
end;

function Run: Integer;
var
  Session: TSession;
begin
  if ParamCount <> 1 then
  begin
    WriteLn(ErrOutput, 'usage: demo_receipt ADDRESS');
    Exit(2);
  end;
  try
    Session := TSession.Create(UnicodeString(ParamStr(1)));
    try
      Result := Sell(Session);
    finally
      Session.Free;
    end;
  except
    on Missing: ELibrary do
    begin
      WriteLn(ErrOutput, Missing.Message);
      Result := 2;
    end;
    on Failure: ECall do
    begin
      WriteLn('not sold: ', Failure.Message);
      Result := 1;
    end;
  end;
end;

begin
  ExitCode := Run;
end.
