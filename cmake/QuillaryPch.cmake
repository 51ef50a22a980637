# Precompiled Qt headers for the libraries and programs: most files of a target include the same few
# Qt headers, which cost more to parse than the file itself. Off with -DQUILLARY_PCH=OFF.
option(QUILLARY_PCH "Precompile the Qt headers the sources share" ON)

if(QUILLARY_PCH)
    set(_core_headers <QDate> <QDateTime> <QHash> <QList> <QMap> <QObject> <QRegularExpression> <QSet>
                      <QString> <QStringList> <QVariant> <QVector> <functional> <memory> <vector>)
    set(_gui_headers ${_core_headers} <QPainter> <QFont> <QFontMetrics>)
    set(_widget_headers ${_gui_headers} <QApplication> <QCheckBox> <QComboBox> <QDialog> <QHBoxLayout>
                        <QHeaderView> <QLabel> <QLineEdit> <QPushButton> <QTableView> <QTableWidget>
                        <QVBoxLayout> <QWidget>)
    target_precompile_headers(quillary_engine PRIVATE ${_core_headers})
    target_precompile_headers(quillary_report PRIVATE ${_gui_headers})
    target_precompile_headers(quillary_ui PRIVATE ${_widget_headers})
    target_precompile_headers(quillary-cli PRIVATE ${_gui_headers})
    target_precompile_headers(quillary PRIVATE ${_widget_headers})
endif()

# ccache takes a precompiled header only when told to ignore the macros and times it holds.
if(QUILLARY_PCH AND CMAKE_CXX_COMPILER_LAUNCHER MATCHES "ccache$")
    find_program(_env env)
    if(_env)
        foreach(_t quillary_engine quillary_report quillary_ui quillary-cli quillary)
            set_property(TARGET ${_t} PROPERTY CXX_COMPILER_LAUNCHER
                         ${_env} CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
                         ${CMAKE_CXX_COMPILER_LAUNCHER})
        endforeach()
    endif()
endif()
