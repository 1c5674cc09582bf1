# The program's pictures: drawn as SVG under resources/, rendered to PNG while building, and compiled in as Qt
# resources, so that no binary is kept in the repository and no SVG reader is needed at run time.

# Names under ":/icons/" are upper case; the SVG of the same name in lower case is their source. 20 px, @2x 40 px.
set(WORKBENCH_LIST_ICONS
  DRIVE_T2 DRIVE_T3 DRIVE_T4 DRIVE_T5 DRIVE_T6 FOLDER FOLDERUP GI GAI HAI AFT PKG BMP JPG PNG PSD DDS WAV TXT
  NULL MAIN LOGO)
# ":/buttons/", 20 px, @2x 40 px.
set(WORKBENCH_BUTTONS
  play stop zoomin zoomout plus minus preview savepng savejpg saveallpng
  copygicr copygaicr copygaicrall copyhaicr copyhaicrall copyanimcr copyanimcrall
  root up down right rightall left leftall addframe removeframe toall abort packer unpacker extract min tray close
  check error)
# ":/cursors/", 32 px with the hot spot at 16,16, @2x 64 px.
set(WORKBENCH_CURSORS handopen handclosed)
# ":/app/workbench-SIZE.png".
set(WORKBENCH_APP_ICON_SIZES 16 32 48 64 128 256)

# Renders `svg` (below resources/) into `png` (below `folder`), `size` pixels square, and appends the PNG's path to
# the caller's list `rendered`.
function(_workbench_render folder svg png size)
  set(source ${PROJECT_SOURCE_DIR}/resources/${svg})
  set(picture ${folder}/${png})
  cmake_path(GET picture PARENT_PATH parent)
  file(MAKE_DIRECTORY ${parent})
  add_custom_command(
    OUTPUT ${picture}
    COMMAND ${WORKBENCH_RSVG_CONVERT} --width ${size} --height ${size} --output ${picture} ${source}
    DEPENDS ${source}
    COMMENT "Rendering ${png}"
    VERBATIM)
  set(rendered ${rendered} ${picture} PARENT_SCOPE)
endfunction()

# workbench_add_pictures(TARGET): gives the target every picture above.
function(workbench_add_pictures target)
  # Debian: librsvg2-bin.
  find_program(WORKBENCH_RSVG_CONVERT rsvg-convert REQUIRED)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/${target}-pictures)
  set_property(GLOBAL PROPERTY WORKBENCH_PICTURES ${folder})
  set(rendered)
  foreach(name IN LISTS WORKBENCH_LIST_ICONS)
    string(TOLOWER ${name} source)
    _workbench_render(${folder} icons/${source}.svg icons/${name}.png 20)
    _workbench_render(${folder} icons/${source}.svg icons/${name}@2x.png 40)
  endforeach()
  foreach(name IN LISTS WORKBENCH_BUTTONS)
    _workbench_render(${folder} buttons/${name}.svg buttons/${name}.png 20)
    _workbench_render(${folder} buttons/${name}.svg buttons/${name}@2x.png 40)
  endforeach()
  foreach(name IN LISTS WORKBENCH_CURSORS)
    _workbench_render(${folder} cursors/${name}.svg cursors/${name}.png 32)
    _workbench_render(${folder} cursors/${name}.svg cursors/${name}@2x.png 64)
  endforeach()
  foreach(size IN LISTS WORKBENCH_APP_ICON_SIZES)
    _workbench_render(${folder} app/workbench.svg app/workbench-${size}.png ${size})
  endforeach()
  # Writes the .qrc and runs rcc on it; names in it are relative to `folder`.
  qt_add_resources(${target} pictures PREFIX "/" BASE ${folder} FILES ${rendered})
endfunction()
