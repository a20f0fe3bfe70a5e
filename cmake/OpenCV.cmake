# OpenCV's core and imgproc modules alone. Its CMake package wants every module installed, which
# would bring well over a hundred packages.
find_library(OPENCV_CORE opencv_core REQUIRED)
find_library(OPENCV_IMGPROC opencv_imgproc REQUIRED)
find_path(OPENCV_INCLUDE opencv2/imgproc.hpp PATH_SUFFIXES opencv4 REQUIRED)

add_library(opencv_pixels INTERFACE)
target_include_directories(opencv_pixels SYSTEM INTERFACE ${OPENCV_INCLUDE})
target_link_libraries(opencv_pixels INTERFACE ${OPENCV_IMGPROC} ${OPENCV_CORE})
