{ How a printer is asked what it has done. }
unit telvofm_questions;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}

interface

type
  { The printer's own names of the variables that a receipt asks for; Closed is what State is while no receipt is open. }
  TQuestions = record
    LastReceipt, LastTotal, State, Closed, Total, Due: UnicodeString;
  end;

const
  { Those of the virtual printer. }
  UsualQuestions: TQuestions = (LastReceipt: 'LAST_RECEIPT'; LastTotal: 'LAST_TOTAL'; State: 'STATE'; Closed: 'closed';
    Total: 'TOTAL'; Due: 'DUE');
  { For a printer that cannot be asked: a receipt asks nothing, and Recover wants a person. }
  NoQuestions: TQuestions = (LastReceipt: ''; LastTotal: ''; State: ''; Closed: ''; Total: ''; Due: '');

{ Whether they are those of a printer that can be asked. }
function CanBeAsked(const Questions: TQuestions): Boolean;

{ Raises EArgumentException when some are missing: with some of the names recovery would take another receipt for its own. }
procedure RequireAllOrNone(const Questions: TQuestions);

implementation

uses
  SysUtils;

function CanBeAsked(const Questions: TQuestions): Boolean;
begin
  Result := Questions.LastReceipt <> '';
end;

procedure RequireAllOrNone(const Questions: TQuestions);
var
  HasAll, HasOne: Boolean;
begin
  with Questions do
  begin
    HasAll := (LastReceipt <> '') and (LastTotal <> '') and (State <> '') and (Closed <> '') and (Total <> '') and (Due <> '');
    HasOne := LastReceipt + LastTotal + State + Closed + Total + Due <> '';
  end;
  if HasOne and not HasAll then
    raise EArgumentException.Create('Some of the printer''s names are missing in the questions; give all of them, or NoQuestions.');
end;

end.
