{ The layer where the demo receipt does not come: layer_test ADDRESS. Prints what is wrong, and ends with 1 then. }
program layer_test;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}
{$IFDEF MSWINDOWS}{$APPTYPE CONSOLE}{$ENDIF}

uses
  SysUtils, checking, layer_recovery, layer_session, layer_values, layer_what_is_open, telvofm_session;

var
  Session: TSession;

begin
  FormatSettings.DecimalSeparator := ',';
  TestValues;
  Session := TSession.Create(UnicodeString(ParamStr(1)));
  try
    TestSession(Session);
    TestRecovery(Session);
    TestWhatIsOpen(Session);
  finally
    Session.Free;
  end;
  TestRecoveryInAnotherSession(UnicodeString(ParamStr(1)));
  TestPrinterThatCannotBeAsked(UnicodeString(ParamStr(1)));
  ExitCode := Ord(Failures > 0);
end.
