# Placing and drawing: the drawing itself apart from the command, and the two commands as processes.
laminate_test(test_render ROOM facade
  SOURCES RenderShapesTest.cpp ${PROJECT_SOURCE_DIR}/tools/JsonText.cpp
  LIBRARIES laminate_render PkgConfig::CAIRO)

laminate_command_test(test_tools_pictures PlaceTest.cpp RenderTest.cpp GoldenPictureTest.cpp)
target_compile_definitions(test_tools_pictures PRIVATE
  LAMINATE_GOLDEN="${CMAKE_CURRENT_SOURCE_DIR}/golden/blinker.png")
target_link_libraries(test_tools_pictures PRIVATE PkgConfig::CAIRO)

if(LAMINATE_DESIGNS)
  laminate_test(test_place_designs ROOM facade
    SOURCES PlaceDesignsTest.cpp ${PROJECT_SOURCE_DIR}/tools/JsonText.cpp
    LIBRARIES laminate_render)
  laminate_command_test(test_tools_picture_designs PictureDesignsTest.cpp)
endif()
