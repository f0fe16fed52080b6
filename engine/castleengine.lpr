{
  The 3D engine library of Plaveno: a flat C interface over the units of
  Castle Game Engine, loaded by the program at run time. One view per
  process; the host owns the OpenGL context and makes it current before
  every call that draws.

  Every function catches what the engine raises and turns it into a warning,
  which reaches the host through the callback (code 4): an exception must
  never cross into C++. Booleans are LongBool (4 bytes), strings UTF-8.

  Built from this file alone with fpc; the engine's sources come from the
  distribution's castle-game-engine-src package.
}

library castleengine;

{$mode objfpc}{$H+}
{ The engine marks its single-scene conveniences deprecated; one scene is
  what this library is about. }
{$warn SYMBOL_DEPRECATED off}

uses CTypes, Math, SysUtils, Classes, CastleUtils, CastleKeysMouse,
  CastleCameras, CastleVectors, CastleGLUtils, CastleImages, CastleSceneCore,
  CastleUIControls, X3DNodes, X3DFields, X3DLoad, CastleLog, CastleBoxes,
  CastleControls, CastleApplicationProperties, CastleWindow, CastleViewport,
  CastleScene, CastleTransform, CastleInputs, CastleShapes, CastleTriangles,
  CastleRenderOptions;

type
  { Marks the crosshair while the pointer is over a touch sensor. }
  TCrosshairManager = class(TObject)
  public
    CrosshairCtl: TCastleCrosshair;
    CrosshairActive: boolean;

    constructor Create;
    destructor Destroy; override;

    procedure UpdateCrosshairImage;
    procedure OnPointingDeviceSensorsChange(Sender: TObject);
  end;

  { Collects the triangles of a scene for the STL writer. }
  TStlWriter = class(TObject)
  public
    Lines: TStringList;
    Count: Integer;
    procedure AddTriangle(Shape: TObject; const Position: TTriangle3;
      const Normal: TTriangle3; const TexCoord: TTriangle4;
      const Face: TFaceIndex);
  end;

  TSingleArray = array of Single;

var
  Window: TCastleWindow;
  Viewport: TCastleAutoNavigationViewport;
  TouchNavigation: TCastleTouchNavigation;
  Crosshair: TCrosshairManager;

function VerifyWindow(const FromFunc: string): boolean;
begin
  Result := (Window <> nil) and (Viewport <> nil);
  if not Result then
    WritelnWarning(FromFunc + ': no view open (CGE_Open not called)');
end;

function VerifyScene(const FromFunc: string): boolean;
begin
  Result := (Window <> nil) and (Viewport <> nil) and (Viewport.Items.MainScene <> nil);
  if not Result then
    WritelnWarning(FromFunc + ': no scene loaded (CGE_LoadSceneFromFile not called)');
end;

procedure Warn(E: TObject);
begin
  WritelnWarning('Engine', ExceptMessage(E));
end;

{ Lifetime ------------------------------------------------------------------ }

procedure CGE_Initialize(ApplicationConfigDirectory: PChar); cdecl;
begin
  CGEApp_Initialize(ApplicationConfigDirectory);
end;

procedure CGE_Finalize(); cdecl;
begin
  CGEApp_Finalize();
end;

procedure CGE_Open(flags: cUInt32; InitialWidth, InitialHeight, Dpi: cUInt32); cdecl;
begin
  try
    if (flags and 1) > 0 then
    begin
      { Fewer triangles for spheres and cones: a house has many of them. }
      DefaultTriangulationSlices := 16;
      DefaultTriangulationStacks := 16;
    end;
    if (flags and 2) > 0 then
      InitializeLog;

    Window := TCastleWindow.Create(nil);
    Application.MainWindow := Window;

    Viewport := TCastleAutoNavigationViewport.Create(Window);
    Viewport.FullSize := true;
    Window.Controls.InsertFront(Viewport);

    TouchNavigation := TCastleTouchNavigation.Create(nil);
    TouchNavigation.FullSize := true;
    TouchNavigation.Viewport := Viewport;
    Viewport.InsertFront(TouchNavigation);

    CGEApp_Open(InitialWidth, InitialHeight, 0, Dpi);

    Crosshair := TCrosshairManager.Create;
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_Close(QuitWhenNoOpenWindows: cBool); cdecl;
begin
  try
    if not VerifyWindow('CGE_Close') then Exit;

    if Viewport.Items.MainScene <> nil then
      Viewport.Items.MainScene.OnPointingDeviceSensorsChange := nil;
    FreeAndNil(Crosshair);

    CGEApp_Close(QuitWhenNoOpenWindows);
    FreeAndNil(TouchNavigation);
    FreeAndNil(Window);
    { The viewport was owned by the window. }
    Viewport := nil;
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_GetOpenGLInformation(szBuffer: PChar; nBufSize: cInt32); cdecl;
begin
  try
    if (szBuffer = nil) or (nBufSize < 1) then Exit;
    StrPLCopy(szBuffer, GLInformationString, nBufSize - 1);
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_GetCastleEngineVersion(szBuffer: PChar; nBufSize: cInt32); cdecl;
begin
  try
    if (szBuffer = nil) or (nBufSize < 1) then Exit;
    StrPLCopy(szBuffer, CastleEngineVersion, nBufSize - 1);
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_Resize(uiViewWidth, uiViewHeight: cUInt32); cdecl;
begin
  try
    if not VerifyWindow('CGE_Resize') then Exit;
    CGEApp_Resize(uiViewWidth, uiViewHeight, 0);
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_Render; cdecl;
begin
  try
    if not VerifyWindow('CGE_Render') then Exit;
    CGEApp_Render;
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SaveScreenshotToFile(szFile: PChar); cdecl;
var
  Image: TRGBImage;
begin
  try
    if not VerifyWindow('CGE_SaveScreenshotToFile') then Exit;

    { The touch controls are not part of the picture. }
    TouchNavigation.Exists := false;
    try
      Image := Window.SaveScreen;
      try
        SaveImage(Image, StrPas(szFile));
      finally
        FreeAndNil(Image);
      end;
    finally
      TouchNavigation.Exists := true;
    end;
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SetLibraryCallbackProc(aProc: TLibraryCallbackProc); cdecl;
begin
  if Window = nil then Exit;
  CGEApp_SetLibraryCallbackProc(aProc);
end;

procedure CGE_Update; cdecl;
begin
  try
    if not VerifyWindow('CGE_Update') then Exit;
    CGEApp_Update;
  except
    on E: TObject do Warn(E);
  end;
end;

{ Input ---------------------------------------------------------------------- }

procedure CGE_MouseDown(X, Y: cInt32; bLeftBtn: cBool; FingerIndex: cInt32); cdecl;
begin
  try
    if not VerifyWindow('CGE_MouseDown') then Exit;
    CGEApp_MouseDown(X, Y, bLeftBtn, FingerIndex);
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_Motion(X, Y: cInt32; FingerIndex: cInt32); cdecl;
begin
  try
    if not VerifyWindow('CGE_Motion') then Exit;
    CGEApp_Motion(X, Y, FingerIndex);
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_MouseUp(X, Y: cInt32; bLeftBtn: cBool; FingerIndex: cInt32); cdecl;
begin
  try
    if not VerifyWindow('CGE_MouseUp') then Exit;
    CGEApp_MouseUp(X, Y, bLeftBtn, FingerIndex, true);
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_MouseWheel(zDelta: cFloat; bVertical: cBool); cdecl;
begin
  try
    if not VerifyWindow('CGE_MouseWheel') then Exit;
    { One notch of a wheel is 120. }
    Window.LibraryMouseWheel(zDelta / 120, bVertical);
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_KeyDown(eKey: cInt32); cdecl;
begin
  try
    if not VerifyWindow('CGE_KeyDown') then Exit;
    if (eKey > 0) and (eKey <= Ord(High(TKey))) then
      CGEApp_KeyDown(eKey);
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_KeyUp(eKey: cInt32); cdecl;
begin
  try
    if not VerifyWindow('CGE_KeyUp') then Exit;
    if (eKey > 0) and (eKey <= Ord(High(TKey))) then
      CGEApp_KeyUp(eKey);
  except
    on E: TObject do Warn(E);
  end;
end;

{ Scene ---------------------------------------------------------------------- }

function HasShadowLight(const Node: TX3DNode): boolean;
var
  I, J: Integer;
  F: TX3DField;
begin
  Result := (Node is TAbstractPunctualLightNode) and
    TAbstractPunctualLightNode(Node).FdShadows.Value;
  I := 0;
  while (not Result) and (I < Node.FieldsCount) do
  begin
    F := Node.Fields[I];
    if (F is TSFNode) and (TSFNode(F).Value <> nil) then
      Result := HasShadowLight(TSFNode(F).Value)
    else if F is TMFNode then
      for J := 0 to TMFNode(F).Count - 1 do
        if (not Result) and (TMFNode(F)[J] <> nil) then
          Result := HasShadowLight(TMFNode(F)[J]);
    Inc(I);
  end;
end;

{ Shadow maps are received by adding a texture and its coordinates to each
  shape; a shape, a geometry or a group of them used in two places (DEF and
  USE) gets them twice and keeps a freed one, which crashes the renderer.
  With a shadow casting light in the scene every such use gets its own copy. }
function IsUnshared(const Node: TX3DNode): boolean;
begin
  Result := (Node is TAbstractGroupingNode) or (Node is TAbstractShapeNode) or
    (Node is TAbstractGeometryNode);
end;

procedure UnshareShapes(const Node: TX3DNode);
var
  I, J: Integer;
  F: TX3DField;
  Child: TX3DNode;
begin
  for I := 0 to Node.FieldsCount - 1 do
  begin
    F := Node.Fields[I];
    if F is TSFNode then
    begin
      Child := TSFNode(F).Value;
      if Child = nil then Continue;
      if IsUnshared(Child) and (Child.ParentFieldsCount > 1) then
      begin
        Child := Child.DeepCopy;
        TSFNode(F).Value := Child;
      end;
      UnshareShapes(Child);
    end else
    if F is TMFNode then
      for J := 0 to TMFNode(F).Count - 1 do
      begin
        Child := TMFNode(F)[J];
        if Child = nil then Continue;
        if IsUnshared(Child) and (Child.ParentFieldsCount > 1) then
        begin
          Child := Child.DeepCopy;
          TMFNode(F).Replace(J, Child);
        end;
        UnshareShapes(Child);
      end;
  end;
end;

procedure CGE_LoadSceneFromFile(szFile: PChar); cdecl;
var
  Scene: TCastleScene;
  Root: TX3DRootNode;
begin
  if Window = nil then Exit;
  try
    if Viewport.Items.MainScene <> nil then
    begin
      Viewport.Items.MainScene.OnPointingDeviceSensorsChange := nil;
      Viewport.Items.MainScene.Free;
    end;

    Scene := TCastleScene.Create(Window);
    Root := LoadNode(StrPas(szFile));
    if HasShadowLight(Root) then
      UnshareShapes(Root);
    Scene.Load(Root, true);
    Scene.Spatial := [ssRendering, ssDynamicCollisions];
    Scene.ProcessEvents := true;
    Viewport.Items.Add(Scene);
    Viewport.Items.MainScene := Scene;

    { The camera follows the bound viewpoint: moves to viewpoints, and
      viewpoints bound by the scene's own events. }
    Viewport.AutoCamera := true;
    Viewport.AssignDefaultCamera;
    Viewport.AssignDefaultNavigation;
  except
    on E: TObject do Warn(E);
  end;
end;

procedure TStlWriter.AddTriangle(Shape: TObject; const Position: TTriangle3;
  const Normal: TTriangle3; const TexCoord: TTriangle4;
  const Face: TFaceIndex);
var
  N: TVector3;
  I: Integer;
begin
  N := Position.Normal;
  Lines.Add(Format('facet normal %g %g %g', [N.X, N.Y, N.Z]));
  Lines.Add('outer loop');
  for I := 0 to 2 do
    Lines.Add(Format('vertex %g %g %g',
      [Position.Data[I].X, Position.Data[I].Y, Position.Data[I].Z]));
  Lines.Add('endloop');
  Lines.Add('endfacet');
  Inc(Count);
end;

{ Writes every visible triangle of the scene, in scene coordinates, as ASCII
  STL. }
procedure SaveSceneAsStl(Scene: TCastleScene; const FileName: string);
var
  Writer: TStlWriter;
  ShapeList: TShapeList;
  Shape: TShape;
  OldFormat: TFormatSettings;
begin
  Writer := TStlWriter.Create;
  Writer.Lines := TStringList.Create;
  OldFormat := DefaultFormatSettings;
  try
    { STL numbers have a point whatever the user's locale. }
    DefaultFormatSettings.DecimalSeparator := '.';
    Writer.Lines.Add('solid scene');
    ShapeList := Scene.Shapes.TraverseList(true, true, false);
    for Shape in ShapeList do
      Shape.Triangulate({$ifdef FPC}@{$endif}Writer.AddTriangle);
    Writer.Lines.Add('endsolid scene');
    Writer.Lines.SaveToFile(FileName);
  finally
    DefaultFormatSettings := OldFormat;
    Writer.Lines.Free;
    Writer.Free;
  end;
end;

{ Writes the loaded scene; the extension picks the format: .stl triangles,
  .wrl the classic encoding, anything else X3D in XML. The file is written
  beside the target first and then renamed over it, so a failed write
  leaves an older file whole. }
procedure CGE_SaveSceneToFile(szFile: PChar; iX3DVersionMajor: cInt32); cdecl;
var
  FileName, TempName, Ext: string;
  Scene: TCastleScene;
  Version: TX3DVersion;
begin
  try
    if not VerifyScene('CGE_SaveSceneToFile') then Exit;
    Scene := Viewport.Items.MainScene;
    if Scene.RootNode = nil then Exit;

    FileName := StrPas(szFile);
    TempName := FileName + '.part~';
    Ext := LowerCase(ExtractFileExt(FileName));
    if Ext = '.stl' then
      SaveSceneAsStl(Scene, TempName)
    else
    begin
      {$warnings off} // the engine keeps the versioned writer for now
      if Ext = '.wrl' then
        Save3D(Scene.RootNode, 'file://' + TempName, 'Plaveno', '', xeClassic)
      else
      begin
        Version.Major := Max(3, iX3DVersionMajor);
        Version.Minor := 0;
        Save3D(Scene.RootNode, 'file://' + TempName, 'Plaveno', '', Version, xeXML, true);
      end;
      {$warnings on}
    end;
    if not RenameFile(TempName, FileName) then
    begin
      DeleteFile(TempName);
      WritelnWarning('Engine', 'Cannot write ' + FileName);
    end;
  except
    on E: TObject do
    begin
      DeleteFile(TempName);
      Warn(E);
    end;
  end;
end;

function CGE_GetViewpointsCount(): cInt32; cdecl;
begin
  Result := 0;
  try
    if not VerifyScene('CGE_GetViewpointsCount') then Exit;
    Result := Viewport.Items.MainScene.ViewpointsCount;
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_GetViewpointName(iViewpointIdx: cInt32; szName: PChar; nBufSize: cInt32); cdecl;
begin
  try
    if (szName = nil) or (nBufSize < 1) then Exit;
    szName^ := #0;
    if not VerifyScene('CGE_GetViewpointName') then Exit;
    if (iViewpointIdx < 0) or
       (iViewpointIdx >= Integer(Viewport.Items.MainScene.ViewpointsCount)) then Exit;
    StrPLCopy(szName, Viewport.Items.MainScene.GetViewpointName(iViewpointIdx), nBufSize - 1);
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_MoveToViewpoint(iViewpointIdx: cInt32; bAnimated: cBool); cdecl;
begin
  try
    if not VerifyScene('CGE_MoveToViewpoint') then Exit;
    if (iViewpointIdx < 0) or
       (iViewpointIdx >= Integer(Viewport.Items.MainScene.ViewpointsCount)) then Exit;
    Viewport.Items.MainScene.MoveToViewpoint(iViewpointIdx, bAnimated);
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_AddViewpointFromCurrentView(szName: PChar); cdecl;
begin
  try
    if not VerifyScene('CGE_AddViewpointFromCurrentView') then Exit;
    if Viewport.Navigation <> nil then
      Viewport.Items.MainScene.AddViewpointFromNavigation(
        Viewport.Navigation, StrPas(szName));
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_GetBoundingBox(pfXMin, pfXMax, pfYMin, pfYMax, pfZMin, pfZMax: pcfloat); cdecl;
var
  BBox: TBox3D;
begin
  try
    if not VerifyScene('CGE_GetBoundingBox') then Exit;
    BBox := Viewport.Items.MainScene.BoundingBox;
    if BBox.IsEmpty then Exit;
    pfXMin^ := BBox.Data[0].X; pfXMax^ := BBox.Data[1].X;
    pfYMin^ := BBox.Data[0].Y; pfYMax^ := BBox.Data[1].Y;
    pfZMin^ := BBox.Data[0].Z; pfZMax^ := BBox.Data[1].Z;
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_GetViewCoords(pfPosX, pfPosY, pfPosZ, pfDirX, pfDirY, pfDirZ,
  pfUpX, pfUpY, pfUpZ, pfGravX, pfGravY, pfGravZ: pcfloat); cdecl;
var
  Pos, Dir, Up, GravityUp: TVector3;
begin
  try
    if not VerifyWindow('CGE_GetViewCoords') then Exit;
    Viewport.Camera.GetWorldView(Pos, Dir, Up);
    GravityUp := Viewport.Camera.GravityUp;
    pfPosX^ := Pos.X; pfPosY^ := Pos.Y; pfPosZ^ := Pos.Z;
    pfDirX^ := Dir.X; pfDirY^ := Dir.Y; pfDirZ^ := Dir.Z;
    pfUpX^ := Up.X; pfUpY^ := Up.Y; pfUpZ^ := Up.Z;
    pfGravX^ := GravityUp.X; pfGravY^ := GravityUp.Y; pfGravZ^ := GravityUp.Z;
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_MoveViewToCoords(bAnimated: cBool;
  fPosX, fPosY, fPosZ, fDirX, fDirY, fDirZ,
  fUpX, fUpY, fUpZ, fGravX, fGravY, fGravZ: cFloat); cdecl;
var
  Pos, Dir, Up, GravityUp: TVector3;
begin
  try
    if not VerifyWindow('CGE_MoveViewToCoords') then Exit;
    Pos := Vector3(fPosX, fPosY, fPosZ);
    Dir := Vector3(fDirX, fDirY, fDirZ);
    Up := Vector3(fUpX, fUpY, fUpZ);
    GravityUp := Vector3(fGravX, fGravY, fGravZ);
    if Dir.IsZero or Up.IsZero then Exit;
    if bAnimated then
      Viewport.Camera.AnimateTo(Pos, Dir, Up, 0.5)
    else
      Viewport.Camera.SetWorldView(Pos, Dir, Up);
    if not GravityUp.IsZero then
      Viewport.Camera.GravityUp := GravityUp;
  except
    on E: TObject do Warn(E);
  end;
end;

{ Navigation ----------------------------------------------------------------- }

{ Inputs of CGE_SetNavigationInputShortcut:
    1 forward, 2 backward, 3 rotate left, 4 rotate right, 5 strafe left,
    6 strafe right, 7 look up, 8 look down, 9 raise the eyes, 10 lower the
    eyes, 11 look straight, 12 faster, 13 slower, 14 jump, 15 crouch, 16 run,
    17 move up, 18 move down (walk and fly);
    30 rotate, 31 zoom, 32 pan (examine).
  Mouse buttons: 0 none, 1 left, 2 middle, 3 right.
  Wheel: 0 none, 1 towards the user, 2 away from the user. }
function WalkInput(Nav: TCastleWalkNavigation; Input: Integer): TInputShortcut;
begin
  case Input of
    1: Result := Nav.Input_Forward;
    2: Result := Nav.Input_Backward;
    3: Result := Nav.Input_LeftRotate;
    4: Result := Nav.Input_RightRotate;
    5: Result := Nav.Input_LeftStrafe;
    6: Result := Nav.Input_RightStrafe;
    7: Result := Nav.Input_UpRotate;
    8: Result := Nav.Input_DownRotate;
    9: Result := Nav.Input_IncreasePreferredHeight;
    10: Result := Nav.Input_DecreasePreferredHeight;
    11: Result := Nav.Input_GravityUp;
    12: Result := Nav.Input_MoveSpeedInc;
    13: Result := Nav.Input_MoveSpeedDec;
    14, 17: Result := Nav.Input_Jump;
    15, 18: Result := Nav.Input_Crouch;
    16: Result := Nav.Input_Run;
    else Result := nil;
  end;
end;

function ExamineInput(Nav: TCastleExamineNavigation; Input: Integer): TInputShortcut;
begin
  case Input of
    30: Result := Nav.Input_Rotate;
    31: Result := Nav.Input_Zoom;
    32: Result := Nav.Input_Move;
    else Result := nil;
  end;
end;

procedure CGE_SetNavigationInputShortcut(eInput, eKey1, eKey2, eMouseButton,
  eMouseWheel: cInt32); cdecl;
var
  Shortcut: TInputShortcut;
  Button: TCastleMouseButton;
  Wheel: TMouseWheelDirection;
  Key1, Key2: TKey;
begin
  try
    if not VerifyWindow('CGE_SetNavigationInputShortcut') then Exit;
    Shortcut := nil;
    if Viewport.Navigation is TCastleWalkNavigation then
      Shortcut := WalkInput(TCastleWalkNavigation(Viewport.Navigation), eInput)
    else if Viewport.Navigation is TCastleExamineNavigation then
      Shortcut := ExamineInput(TCastleExamineNavigation(Viewport.Navigation), eInput);
    if Shortcut = nil then Exit;

    Key1 := keyNone;
    Key2 := keyNone;
    if (eKey1 > 0) and (eKey1 <= Ord(High(TKey))) then Key1 := TKey(eKey1);
    if (eKey2 > 0) and (eKey2 <= Ord(High(TKey))) then Key2 := TKey(eKey2);
    case eMouseButton of
      2: Button := buttonMiddle;
      3: Button := buttonRight;
      else Button := buttonLeft;
    end;
    case eMouseWheel of
      1: Wheel := mwDown;
      2: Wheel := mwUp;
      else Wheel := mwNone;
    end;
    Shortcut.Assign(Key1, Key2, '', eMouseButton in [1..3], Button, Wheel);
  except
    on E: TObject do Warn(E);
  end;
end;

function CGE_GetNavigationType(): cInt32; cdecl;
begin
  Result := -1;
  try
    if not VerifyWindow('CGE_GetNavigationType') then Exit;
    case Viewport.NavigationType of
      ntWalk     : Result := 0;
      ntFly      : Result := 1;
      ntExamine  : Result := 2;
      ntTurntable: Result := 3;
      ntNone     : Result := 4;
    end;
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SetNavigationType(NewType: cInt32); cdecl;
begin
  try
    if not VerifyWindow('CGE_SetNavigationType') then Exit;
    case NewType of
      0: Viewport.NavigationType := ntWalk;
      1: Viewport.NavigationType := ntFly;
      2: Viewport.NavigationType := ntExamine;
      3: Viewport.NavigationType := ntTurntable;
      4: Viewport.NavigationType := ntNone;
      else WritelnWarning('Engine', Format('Unknown navigation type %d', [NewType]));
    end;
  except
    on E: TObject do Warn(E);
  end;
end;

function TouchInterfaceFromConst(eMode: cInt32): TTouchInterface;
begin
  case eMode of
    1: Result := tiWalk;
    2: Result := tiWalkRotate;
    3: Result := tiFlyWalk;
    4: Result := tiPan;
    else Result := tiNone;
  end;
end;

function ConstFromTouchInterface(eMode: TTouchInterface): cInt32;
begin
  case eMode of
    tiWalk: Result := 1;
    tiWalkRotate: Result := 2;
    tiFlyWalk: Result := 3;
    tiPan: Result := 4;
    else Result := 0;
  end;
end;

procedure CGE_SetTouchInterface(eMode: cInt32); cdecl;
begin
  try
    if TouchNavigation = nil then Exit;
    TouchNavigation.TouchInterface := TouchInterfaceFromConst(eMode);
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SetAutoTouchInterface(bAutomaticTouchInterface: cBool); cdecl;
begin
  try
    if TouchNavigation = nil then Exit;
    TouchNavigation.AutoTouchInterface := bAutomaticTouchInterface;
  except
    on E: TObject do Warn(E);
  end;
end;

{ 1: dragging with the mouse walks (touch screens), 0: it turns the head. }
procedure CGE_SetWalkNavigationMouseDragMode(eMode: cInt32); cdecl;
var
  WalkNavigation: TCastleWalkNavigation;
begin
  try
    if not VerifyWindow('CGE_SetWalkNavigationMouseDragMode') then Exit;
    WalkNavigation := Viewport.WalkNavigation(false);
    if WalkNavigation = nil then Exit;
    if eMode = 1 then
      WalkNavigation.MouseDragMode := mdWalk
    else if eMode = 2 then
      WalkNavigation.MouseDragMode := mdNone
    else
      WalkNavigation.MouseDragMode := mdRotate;
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_IncreaseSceneTime(fTimeS: cFloat); cdecl;
var
  DummyRemoveType: TRemoveType;
begin
  try
    if not VerifyScene('CGE_IncreaseSceneTime') then Exit;
    Viewport.Items.MainScene.IncreaseTime(fTimeS);
    DummyRemoveType := rtNone;
    Viewport.Camera.Update(fTimeS, DummyRemoveType);
  except
    on E: TObject do Warn(E);
  end;
end;

{ Variables ------------------------------------------------------------------
    0 head bobbing, 1 screen space ambient occlusion, 2 mouse look,
    3 crosshair (1 cross, 2 cross in a rectangle), 4 a camera animation runs
    (read only), 5 the touch control of walking, 6 scene time paused,
    7 redraw every frame, 8 headlight, 9 occlusion query, 10 Phong shading,
    11 scale the user interface by the screen's resolution. }

procedure CGE_SetVariableInt(eVar: cInt32; nValue: cInt32); cdecl;
var
  WalkNavigation: TCastleWalkNavigation;
  Scene: TCastleScene;
begin
  if (Window = nil) or (Viewport = nil) then Exit;
  try
    Scene := Viewport.Items.MainScene;
    case eVar of
      0: begin
        WalkNavigation := Viewport.WalkNavigation(false);
        if WalkNavigation <> nil then
        begin
          if nValue > 0 then
            WalkNavigation.HeadBobbing := TCastleWalkNavigation.DefaultHeadBobbing
          else
            WalkNavigation.HeadBobbing := 0.0;
        end;
      end;
      1: if Viewport.ScreenSpaceAmbientOcclusionAvailable then
           Viewport.ScreenSpaceAmbientOcclusion := nValue > 0;
      2: begin
        WalkNavigation := Viewport.WalkNavigation(false);
        if WalkNavigation <> nil then
          WalkNavigation.MouseLook := nValue > 0;
      end;
      3: begin
        Crosshair.CrosshairCtl.Exists := nValue > 0;
        if nValue > 0 then
        begin
          if nValue = 2 then
            Crosshair.CrosshairCtl.Shape := csCrossRect
          else
            Crosshair.CrosshairCtl.Shape := csCross;
          Crosshair.UpdateCrosshairImage;
          if Scene <> nil then
            Scene.OnPointingDeviceSensorsChange := @Crosshair.OnPointingDeviceSensorsChange;
        end;
      end;
      5: TouchNavigation.AutoWalkTouchInterface := TouchInterfaceFromConst(nValue);
      6: Viewport.Items.Paused := nValue > 0;
      7: Window.AutoRedisplay := nValue > 0;
      8: if Scene <> nil then Scene.HeadlightOn := nValue > 0;
      9: if Scene <> nil then Scene.RenderOptions.OcclusionQuery := nValue > 0;
      10: if Scene <> nil then Scene.RenderOptions.PhongShading := nValue > 0;
      11: if nValue > 0 then
            Window.Container.UIScaling := usDpiScale
          else
            Window.Container.UIScaling := usNone;
    end;
  except
    on E: TObject do Warn(E);
  end;
end;

function CGE_GetVariableInt(eVar: cInt32): cInt32; cdecl;
var
  WalkNavigation: TCastleWalkNavigation;
  Scene: TCastleScene;
begin
  Result := -1;
  if (Window = nil) or (Viewport = nil) then Exit;
  try
    Scene := Viewport.Items.MainScene;
    case eVar of
      0: begin
        WalkNavigation := Viewport.WalkNavigation(false);
        Result := Ord((WalkNavigation <> nil) and (WalkNavigation.HeadBobbing > 0));
      end;
      1: Result := Ord(Viewport.ScreenSpaceAmbientOcclusionAvailable and
        Viewport.ScreenSpaceAmbientOcclusion);
      2: begin
        WalkNavigation := Viewport.WalkNavigation(false);
        Result := Ord((WalkNavigation <> nil) and WalkNavigation.MouseLook);
      end;
      3: if not Crosshair.CrosshairCtl.Exists then
           Result := 0
         else if Crosshair.CrosshairCtl.Shape = csCrossRect then
           Result := 2
         else
           Result := 1;
      4: Result := Ord(Viewport.Camera.Animation);
      5: Result := ConstFromTouchInterface(TouchNavigation.AutoWalkTouchInterface);
      6: Result := Ord(Viewport.Items.Paused);
      7: Result := Ord(Window.AutoRedisplay);
      8: Result := Ord((Scene <> nil) and Scene.HeadlightOn);
      9: Result := Ord((Scene <> nil) and Scene.RenderOptions.OcclusionQuery);
      10: Result := Ord((Scene <> nil) and Scene.RenderOptions.PhongShading);
      11: Result := Ord(Window.Container.UIScaling = usDpiScale);
    end;
  except
    on E: TObject do Warn(E);
  end;
end;

{ Fields of named nodes -------------------------------------------------------
  Each setter finds the field of a DEF node of the loaded scene and sends the
  value as an event, so routes and the renderer see the change. A field of
  another type than the setter's is reported and left alone. }

function FindField(szNodeName, szFieldName: PChar; FieldClass: TX3DFieldClass;
  const FromFunc: string): TX3DField;
begin
  Result := nil;
  if not VerifyScene(FromFunc) then Exit;
  if (szNodeName = nil) or (szFieldName = nil) then Exit;
  Result := Viewport.Items.MainScene.Field(StrPas(szNodeName), StrPas(szFieldName));
  if Result = nil then
  begin
    WritelnWarning('Engine', Format('%s: no field %s.%s',
      [FromFunc, StrPas(szNodeName), StrPas(szFieldName)]));
    Exit;
  end;
  if not (Result is FieldClass) then
  begin
    WritelnWarning('Engine', Format('%s: field %s.%s is of type %s',
      [FromFunc, StrPas(szNodeName), StrPas(szFieldName), Result.X3DType]));
    Result := nil;
  end;
end;

procedure CGE_SetNodeFieldValue_SFFloat(szNodeName, szFieldName: PChar; fVal: cFloat); cdecl;
var F: TX3DField;
begin
  try
    F := FindField(szNodeName, szFieldName, TSFFloat, 'CGE_SetNodeFieldValue_SFFloat');
    if F <> nil then TSFFloat(F).Send(fVal);
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SetNodeFieldValue_SFDouble(szNodeName, szFieldName: PChar; dVal: cDouble); cdecl;
var F: TX3DField;
begin
  try
    F := FindField(szNodeName, szFieldName, TSFDouble, 'CGE_SetNodeFieldValue_SFDouble');
    if F <> nil then TSFDouble(F).Send(dVal);
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SetNodeFieldValue_SFInt32(szNodeName, szFieldName: PChar; iVal: cInt32); cdecl;
var F: TX3DField;
begin
  try
    F := FindField(szNodeName, szFieldName, TSFLong, 'CGE_SetNodeFieldValue_SFInt32');
    if F <> nil then TSFLong(F).Send(iVal);
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SetNodeFieldValue_SFBool(szNodeName, szFieldName: PChar; bVal: cBool); cdecl;
var F: TX3DField;
begin
  try
    F := FindField(szNodeName, szFieldName, TSFBool, 'CGE_SetNodeFieldValue_SFBool');
    if F <> nil then TSFBool(F).Send(Boolean(bVal));
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SetNodeFieldValue_SFVec2f(szNodeName, szFieldName: PChar; fX, fY: cFloat); cdecl;
var F: TX3DField;
begin
  try
    F := FindField(szNodeName, szFieldName, TSFVec2f, 'CGE_SetNodeFieldValue_SFVec2f');
    if F <> nil then TSFVec2f(F).Send(Vector2(fX, fY));
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SetNodeFieldValue_SFVec3f(szNodeName, szFieldName: PChar; fX, fY, fZ: cFloat); cdecl;
var F: TX3DField;
begin
  try
    F := FindField(szNodeName, szFieldName, TSFVec3f, 'CGE_SetNodeFieldValue_SFVec3f');
    if F <> nil then TSFVec3f(F).Send(Vector3(fX, fY, fZ));
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SetNodeFieldValue_SFVec4f(szNodeName, szFieldName: PChar; fX, fY, fZ, fW: cFloat); cdecl;
var F: TX3DField;
begin
  try
    F := FindField(szNodeName, szFieldName, TSFVec4f, 'CGE_SetNodeFieldValue_SFVec4f');
    if F <> nil then TSFVec4f(F).Send(Vector4(fX, fY, fZ, fW));
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SetNodeFieldValue_SFVec2d(szNodeName, szFieldName: PChar; dX, dY: cDouble); cdecl;
var F: TX3DField;
begin
  try
    F := FindField(szNodeName, szFieldName, TSFVec2d, 'CGE_SetNodeFieldValue_SFVec2d');
    if F <> nil then TSFVec2d(F).Send(Vector2Double(dX, dY));
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SetNodeFieldValue_SFVec3d(szNodeName, szFieldName: PChar; dX, dY, dZ: cDouble); cdecl;
var F: TX3DField;
begin
  try
    F := FindField(szNodeName, szFieldName, TSFVec3d, 'CGE_SetNodeFieldValue_SFVec3d');
    if F <> nil then TSFVec3d(F).Send(Vector3Double(dX, dY, dZ));
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SetNodeFieldValue_SFVec4d(szNodeName, szFieldName: PChar; dX, dY, dZ, dW: cDouble); cdecl;
var F: TX3DField;
begin
  try
    F := FindField(szNodeName, szFieldName, TSFVec4d, 'CGE_SetNodeFieldValue_SFVec4d');
    if F <> nil then TSFVec4d(F).Send(Vector4Double(dX, dY, dZ, dW));
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SetNodeFieldValue_SFRotation(szNodeName, szFieldName: PChar;
  fAxisX, fAxisY, fAxisZ, fAngle: cFloat); cdecl;
var F: TX3DField;
begin
  try
    F := FindField(szNodeName, szFieldName, TSFRotation, 'CGE_SetNodeFieldValue_SFRotation');
    if F <> nil then TSFRotation(F).Send(Vector4(fAxisX, fAxisY, fAxisZ, fAngle));
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SetNodeFieldValue_SFString(szNodeName, szFieldName: PChar; szVal: PChar); cdecl;
var F: TX3DField;
begin
  try
    F := FindField(szNodeName, szFieldName, TSFString, 'CGE_SetNodeFieldValue_SFString');
    if F <> nil then TSFString(F).Send(StrPas(szVal));
  except
    on E: TObject do Warn(E);
  end;
end;

{ The MF setters take the number of items and a packed array of them: for
  the vector kinds the components one after another, for MFBool 4-byte
  booleans, for MFString an array of UTF-8 texts. A negative count is no
  value. }

function ValidCount(nCount: cInt32; pValues: Pointer): boolean;
begin
  Result := (nCount = 0) or ((nCount > 0) and (pValues <> nil));
end;

procedure CGE_SetNodeFieldValue_MFFloat(szNodeName, szFieldName: PChar;
  nCount: cInt32; pValues: pcfloat); cdecl;
var F: TX3DField; A: array of Single; I: Integer;
begin
  try
    if not ValidCount(nCount, pValues) then Exit;
    F := FindField(szNodeName, szFieldName, TMFFloat, 'CGE_SetNodeFieldValue_MFFloat');
    if F = nil then Exit;
    SetLength(A, nCount);
    for I := 0 to nCount - 1 do A[I] := pValues[I];
    TMFFloat(F).Send(A);
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SetNodeFieldValue_MFDouble(szNodeName, szFieldName: PChar;
  nCount: cInt32; pValues: pcdouble); cdecl;
var F: TX3DField; A: array of Double; I: Integer;
begin
  try
    if not ValidCount(nCount, pValues) then Exit;
    F := FindField(szNodeName, szFieldName, TMFDouble, 'CGE_SetNodeFieldValue_MFDouble');
    if F = nil then Exit;
    SetLength(A, nCount);
    for I := 0 to nCount - 1 do A[I] := pValues[I];
    TMFDouble(F).Send(A);
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SetNodeFieldValue_MFInt32(szNodeName, szFieldName: PChar;
  nCount: cInt32; pValues: pcint32); cdecl;
var F: TX3DField; A: array of LongInt; I: Integer;
begin
  try
    if not ValidCount(nCount, pValues) then Exit;
    F := FindField(szNodeName, szFieldName, TMFLong, 'CGE_SetNodeFieldValue_MFInt32');
    if F = nil then Exit;
    SetLength(A, nCount);
    for I := 0 to nCount - 1 do A[I] := pValues[I];
    TMFLong(F).Send(A);
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SetNodeFieldValue_MFBool(szNodeName, szFieldName: PChar;
  nCount: cInt32; pValues: pcint32); cdecl;
var F: TX3DField; A: array of Boolean; I: Integer;
begin
  try
    if not ValidCount(nCount, pValues) then Exit;
    F := FindField(szNodeName, szFieldName, TMFBool, 'CGE_SetNodeFieldValue_MFBool');
    if F = nil then Exit;
    SetLength(A, nCount);
    for I := 0 to nCount - 1 do A[I] := pValues[I] <> 0;
    TMFBool(F).Send(A);
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SetNodeFieldValue_MFVec2f(szNodeName, szFieldName: PChar;
  nCount: cInt32; pValues: pcfloat); cdecl;
var F: TX3DField; A: array of TVector2; I: Integer;
begin
  try
    if not ValidCount(nCount, pValues) then Exit;
    F := FindField(szNodeName, szFieldName, TMFVec2f, 'CGE_SetNodeFieldValue_MFVec2f');
    if F = nil then Exit;
    SetLength(A, nCount);
    for I := 0 to nCount - 1 do
      A[I] := Vector2(pValues[I * 2], pValues[I * 2 + 1]);
    TMFVec2f(F).Send(A);
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SetNodeFieldValue_MFVec3f(szNodeName, szFieldName: PChar;
  nCount: cInt32; pValues: pcfloat); cdecl;
var F: TX3DField; A: array of TVector3; I: Integer;
begin
  try
    if not ValidCount(nCount, pValues) then Exit;
    F := FindField(szNodeName, szFieldName, TMFVec3f, 'CGE_SetNodeFieldValue_MFVec3f');
    if F = nil then Exit;
    SetLength(A, nCount);
    for I := 0 to nCount - 1 do
      A[I] := Vector3(pValues[I * 3], pValues[I * 3 + 1], pValues[I * 3 + 2]);
    TMFVec3f(F).Send(A);
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SetNodeFieldValue_MFVec4f(szNodeName, szFieldName: PChar;
  nCount: cInt32; pValues: pcfloat); cdecl;
var F: TX3DField; A: array of TVector4; I: Integer;
begin
  try
    if not ValidCount(nCount, pValues) then Exit;
    F := FindField(szNodeName, szFieldName, TMFVec4f, 'CGE_SetNodeFieldValue_MFVec4f');
    if F = nil then Exit;
    SetLength(A, nCount);
    for I := 0 to nCount - 1 do
      A[I] := Vector4(pValues[I * 4], pValues[I * 4 + 1], pValues[I * 4 + 2], pValues[I * 4 + 3]);
    TMFVec4f(F).Send(A);
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SetNodeFieldValue_MFVec2d(szNodeName, szFieldName: PChar;
  nCount: cInt32; pValues: pcdouble); cdecl;
var F: TX3DField; A: array of TVector2Double; I: Integer;
begin
  try
    if not ValidCount(nCount, pValues) then Exit;
    F := FindField(szNodeName, szFieldName, TMFVec2d, 'CGE_SetNodeFieldValue_MFVec2d');
    if F = nil then Exit;
    SetLength(A, nCount);
    for I := 0 to nCount - 1 do
      A[I] := Vector2Double(pValues[I * 2], pValues[I * 2 + 1]);
    TMFVec2d(F).Send(A);
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SetNodeFieldValue_MFVec3d(szNodeName, szFieldName: PChar;
  nCount: cInt32; pValues: pcdouble); cdecl;
var F: TX3DField; A: array of TVector3Double; I: Integer;
begin
  try
    if not ValidCount(nCount, pValues) then Exit;
    F := FindField(szNodeName, szFieldName, TMFVec3d, 'CGE_SetNodeFieldValue_MFVec3d');
    if F = nil then Exit;
    SetLength(A, nCount);
    for I := 0 to nCount - 1 do
      A[I] := Vector3Double(pValues[I * 3], pValues[I * 3 + 1], pValues[I * 3 + 2]);
    TMFVec3d(F).Send(A);
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SetNodeFieldValue_MFVec4d(szNodeName, szFieldName: PChar;
  nCount: cInt32; pValues: pcdouble); cdecl;
var F: TX3DField; A: array of TVector4Double; I: Integer;
begin
  try
    if not ValidCount(nCount, pValues) then Exit;
    F := FindField(szNodeName, szFieldName, TMFVec4d, 'CGE_SetNodeFieldValue_MFVec4d');
    if F = nil then Exit;
    SetLength(A, nCount);
    for I := 0 to nCount - 1 do
      A[I] := Vector4Double(pValues[I * 4], pValues[I * 4 + 1], pValues[I * 4 + 2], pValues[I * 4 + 3]);
    TMFVec4d(F).Send(A);
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SetNodeFieldValue_MFRotation(szNodeName, szFieldName: PChar;
  nCount: cInt32; pValues: pcfloat); cdecl;
var F: TX3DField; A: array of TVector4; I: Integer;
begin
  try
    if not ValidCount(nCount, pValues) then Exit;
    F := FindField(szNodeName, szFieldName, TMFRotation, 'CGE_SetNodeFieldValue_MFRotation');
    if F = nil then Exit;
    SetLength(A, nCount);
    for I := 0 to nCount - 1 do
      A[I] := Vector4(pValues[I * 4], pValues[I * 4 + 1], pValues[I * 4 + 2], pValues[I * 4 + 3]);
    TMFRotation(F).Send(A);
  except
    on E: TObject do Warn(E);
  end;
end;

procedure CGE_SetNodeFieldValue_MFString(szNodeName, szFieldName: PChar;
  nCount: cInt32; pValues: PPChar); cdecl;
var F: TX3DField; A: array of string; I: Integer;
begin
  try
    if not ValidCount(nCount, pValues) then Exit;
    F := FindField(szNodeName, szFieldName, TMFString, 'CGE_SetNodeFieldValue_MFString');
    if F = nil then Exit;
    SetLength(A, nCount);
    for I := 0 to nCount - 1 do
      A[I] := StrPas(pValues[I]);
    TMFString(F).Send(A);
  except
    on E: TObject do Warn(E);
  end;
end;

{ Crosshair ------------------------------------------------------------------ }

constructor TCrosshairManager.Create;
begin
  inherited;
  CrosshairCtl := TCastleCrosshair.Create(Window);
  CrosshairCtl.Exists := false;
  Window.Controls.InsertFront(CrosshairCtl);
end;

destructor TCrosshairManager.Destroy;
begin
  Window.Controls.Remove(CrosshairCtl);
  FreeAndNil(CrosshairCtl);
  inherited;
end;

procedure TCrosshairManager.UpdateCrosshairImage;
begin
  if not CrosshairCtl.Exists then Exit;
  if CrosshairActive then
    CrosshairCtl.Shape := csCrossRect
  else
    CrosshairCtl.Shape := csCross;
end;

procedure TCrosshairManager.OnPointingDeviceSensorsChange(Sender: TObject);
var
  OverSensor: Boolean;
  SensorList: TPointingDeviceSensorList;
begin
  OverSensor := false;
  SensorList := Viewport.Items.MainScene.PointingDeviceSensors;
  if SensorList <> nil then
    OverSensor := SensorList.EnabledCount > 0;
  if CrosshairActive <> OverSensor then
  begin
    CrosshairActive := OverSensor;
    UpdateCrosshairImage;
  end;
end;

exports
  CGE_Initialize,
  CGE_Finalize,
  CGE_Open,
  CGE_Close,
  CGE_GetOpenGLInformation,
  CGE_GetCastleEngineVersion,
  CGE_Resize,
  CGE_Render,
  CGE_SaveScreenshotToFile,
  CGE_SetLibraryCallbackProc,
  CGE_Update,
  CGE_MouseDown,
  CGE_Motion,
  CGE_MouseUp,
  CGE_MouseWheel,
  CGE_KeyDown,
  CGE_KeyUp,
  CGE_LoadSceneFromFile,
  CGE_SaveSceneToFile,
  CGE_GetViewpointsCount,
  CGE_GetViewpointName,
  CGE_MoveToViewpoint,
  CGE_AddViewpointFromCurrentView,
  CGE_GetBoundingBox,
  CGE_GetViewCoords,
  CGE_MoveViewToCoords,
  CGE_SetNavigationInputShortcut,
  CGE_GetNavigationType,
  CGE_SetNavigationType,
  CGE_SetTouchInterface,
  CGE_SetAutoTouchInterface,
  CGE_SetWalkNavigationMouseDragMode,
  CGE_SetVariableInt,
  CGE_GetVariableInt,
  CGE_SetNodeFieldValue_SFFloat,
  CGE_SetNodeFieldValue_SFDouble,
  CGE_SetNodeFieldValue_SFInt32,
  CGE_SetNodeFieldValue_SFBool,
  CGE_SetNodeFieldValue_SFVec2f,
  CGE_SetNodeFieldValue_SFVec3f,
  CGE_SetNodeFieldValue_SFVec4f,
  CGE_SetNodeFieldValue_SFVec2d,
  CGE_SetNodeFieldValue_SFVec3d,
  CGE_SetNodeFieldValue_SFVec4d,
  CGE_SetNodeFieldValue_SFRotation,
  CGE_SetNodeFieldValue_SFString,
  CGE_SetNodeFieldValue_MFFloat,
  CGE_SetNodeFieldValue_MFDouble,
  CGE_SetNodeFieldValue_MFInt32,
  CGE_SetNodeFieldValue_MFBool,
  CGE_SetNodeFieldValue_MFVec2f,
  CGE_SetNodeFieldValue_MFVec3f,
  CGE_SetNodeFieldValue_MFVec4f,
  CGE_SetNodeFieldValue_MFVec2d,
  CGE_SetNodeFieldValue_MFVec3d,
  CGE_SetNodeFieldValue_MFVec4d,
  CGE_SetNodeFieldValue_MFRotation,
  CGE_SetNodeFieldValue_MFString,
  CGE_IncreaseSceneTime;

begin
  SetExceptionMask([exInvalidOp, exDenormalized, exZeroDivide,
    exOverflow, exUnderflow, exPrecision]);
end.
