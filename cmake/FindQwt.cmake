# Qwt for Qt 5: target Qwt::Qwt. Its pkg-config file asks for Qt5OpenGL, which nothing here needs.
find_path(QWT_INCLUDE_DIR qwt_plot.h PATH_SUFFIXES qwt qwt-qt5)
find_library(QWT_LIBRARY NAMES qwt-qt5 qwt)
mark_as_advanced(QWT_INCLUDE_DIR QWT_LIBRARY)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Qwt REQUIRED_VARS QWT_LIBRARY QWT_INCLUDE_DIR)

if(Qwt_FOUND AND NOT TARGET Qwt::Qwt)
    add_library(Qwt::Qwt UNKNOWN IMPORTED)
    set_target_properties(Qwt::Qwt PROPERTIES
        IMPORTED_LOCATION ${QWT_LIBRARY}
        INTERFACE_INCLUDE_DIRECTORIES ${QWT_INCLUDE_DIR}
        INTERFACE_LINK_LIBRARIES Qt5::Widgets)
    # The variant with several axes per side has the names that charts/multiaxis gives to the stock
    # library; the two do not go together.
    file(STRINGS ${QWT_INCLUDE_DIR}/qwt_plot.h QWT_AXES_COUNT REGEX "setAxesCount")
    if(QWT_AXES_COUNT)
        message(FATAL_ERROR "${QWT_INCLUDE_DIR} is the multi-axis variant of Qwt. Set QWT_INCLUDE_DIR "
                            "and QWT_LIBRARY to a stock Qwt 6.1, package libqwt-qt5-dev.")
    endif()
endif()
