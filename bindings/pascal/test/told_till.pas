{ A till that is told each of its steps by told_till_test.py: told_till ADDRESS. }
program told_till;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}
{$IFDEF MSWINDOWS}{$APPTYPE CONSOLE}{$ENDIF}

uses
  SysUtils, Classes, telvofm_failures, telvofm_receipt, telvofm_recovery, telvofm_session, telvofm_texts;

var
  Session: TSession;
  Receipts: TStringList; { by their names }

{ The first word of the line, which is cut off. }
function NextWord(var Line: string): string;
var
  Blank: Integer;
begin
  Blank := Pos(' ', Line + ' ');
  Result := Copy(Line, 1, Blank - 1);
  Delete(Line, 1, Blank);
end;

function ReceiptCalled(const Name: string): TReceipt;
begin
  if Receipts.IndexOf(Name) < 0 then
    Receipts.AddObject(Name, TReceipt.Create(Session));
  Result := TReceipt(Receipts.Objects[Receipts.IndexOf(Name)]);
end;

procedure Forget(const Name: string);
begin
  while Receipts.IndexOf(Name) >= 0 do
    Receipts.Delete(Receipts.IndexOf(Name)); { which frees the receipt }
end;

function OfReceipt(const Step: string; Receipt: TReceipt; Sum: Currency): string;
begin
  Result := '';
  if Step = 'begin' then
    Receipt.BeginReceipt
  else if Step = 'sell' then
    Receipt.Sell('Čaj', Sum, 'A', 1, Sum, '')
  else if Step = 'void' then
    Receipt.Void('Čaj', Sum, 'A', 1, Sum, '')
  else if Step = 'pay' then
    Receipt.Pay(1, Sum, '')
  else if Step = 'cancel' then
    Receipt.Cancel
  else if Step = 'recover' then
    Result := RecoveryText(Receipt.Recover)
  else
    Result := string(Receipt.EndReceipt);
end;

function Done(Line: string): string;
var
  Step, Name: string;
  Sum: Currency;
begin
  Result := '';
  Step := NextWord(Line);
  Name := NextWord(Line);
  Sum := StrToCurrDef(NextWord(Line), 0);
  if Step = 'day' then
    Session.BeginDay
  else if Step = 'ask' then
    Result := string(Session.Variable(UnicodeString(Name)))
  else if Step = 'reopen' then
    Session.Reopen
  else if Step = 'forget' then
    Receipts.Clear
  else if Step = 'interrupted' then
  begin
    Forget(Name);
    Receipts.AddObject(Name, TReceipt.CreateInterrupted(Session, UnicodeString(Line), Sum));
  end
  else
    Result := OfReceipt(Step, ReceiptCalled(Name), Sum);
end;

{ "done", with what the step delivers behind it, or what failed. }
function Said(const Line: string): string;
begin
  try
    Result := TrimRight('done ' + Done(Line));
  except
    on Failure: ECall do
      Result := Copy(Failure.ClassName, 2) + ' ' + Failure.Message;
  end;
end;

var
  Line: string;

begin
  FormatSettings.DecimalSeparator := '.';
  Receipts := TStringList.Create;
  Receipts.OwnsObjects := True;
  Session := TSession.Create(UnicodeString(ParamStr(1)));
  try
    while not EOF(Input) do
    begin
      ReadLn(Line);
      WriteLn(StdErr, Said(Line)); { the library writes to standard output }
      Flush(StdErr);
    end;
  finally
    Receipts.Free;
    Session.Free;
  end;
end.
