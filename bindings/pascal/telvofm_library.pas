{ Finds and loads the library, and says in one sentence why that did not work. }
unit telvofm_library;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}

interface

uses
  telvofm_functions;

var
  { The raw layer; filled by LoadTelvofm. }
  Functions: TFunctions;
  { The part of it that sessions do not call, because a buffer that is too short ends the process. }
  BufferFunctions: TBufferFunctions;

{ Loads the library that the variable TELVOFM_LIBRARY names, or that the system finds under its usual name: once, and again after a
  failure. A session does it by itself. Raises ELibrary when there is none that fits. }
procedure LoadTelvofm;

{ Raises ELibrary unless a program of so many bits can load the library. }
procedure RequireBits(Bits: Integer);

implementation

uses
  SysUtils,
  {$IFDEF FPC} dynlibs, {$ELSE} Windows, {$ENDIF}
  telvofm_failures;

const
  Version = 106; { of the interface }
  UsualName = {$IFDEF MSWINDOWS} 'telvofm.dll' {$ELSE} 'libtelvofm.so.1' {$ENDIF};

type
  TLibrary = {$IFDEF FPC} TLibHandle {$ELSE} HMODULE {$ENDIF};

var
  IsLoaded: Boolean = False;

procedure RequireBits(Bits: Integer);
begin
  if Bits <> 64 then
    raise ELibrary.CreateFmt('TelvoFM is a 64-bit library and this program has %d bits; compile it for the 64-bit platform', [Bits]);
end;

function Opened(const Name: string): TLibrary;
begin
  {$IFDEF FPC}
  Result := LoadLibrary(UnicodeString(Name));
  {$ELSE}
  Result := LoadLibrary(PChar(Name));
  {$ENDIF}
  if Result = 0 then
    raise ELibrary.Create(Name + ' cannot be loaded; put the 64-bit TelvoFM library beside the program, or let TELVOFM_LIBRARY name it');
end;

function NameOfLibrary: string;
begin
  Result := GetEnvironmentVariable('TELVOFM_LIBRARY');
  if Result = '' then
    Result := UsualName;
end;

{ Finds as many functions as there are names, one behind the other. }
procedure Fill(Target: PPointer; const Names: array of PAnsiChar; Handle: TLibrary; const Name: string);
var
  Index: Integer;
begin
  for Index := Low(Names) to High(Names) do
  begin
    Target^ := GetProcAddress(Handle, Names[Index]);
    if Target^ = nil then
      raise ELibrary.CreateFmt('%s is not this TelvoFM: it has no function %s; let TELVOFM_LIBRARY name the right library',
        [Name, Names[Index]]);
    Inc(Target);
  end;
end;

procedure LoadTelvofm;
var
  Name: string;
  Handle: TLibrary;
begin
  if IsLoaded then
    Exit;
  RequireBits(SizeOf(Pointer) * 8);
  Name := NameOfLibrary;
  Handle := Opened(Name);
  Fill(@Functions, FunctionNames, Handle, Name);
  Fill(@BufferFunctions, BufferFunctionNames, Handle, Name);
  if Functions.getVersion() <> Version then
    raise ELibrary.CreateFmt('%s has version %d of the interface, and these units need %d; take both from the same release',
      [Name, Functions.getVersion(), Version]);
  IsLoaded := True;
end;

end.
