#pragma once
// One report definition of the suite's report list, as a bag of properties. The list itself belongs to
// the suite; this program declares the class and makes no instance of it.
#include <QString>
#include <QVariant>

namespace ql {

class ReportInf {
public:
    QString Id() const { return m_id; }
    // Set once: a second set is ignored.
    void setId(const QString& id);
    qint32 Row() const { return m_row; }
    void setRow(qint32 row) { m_row = row; }
    QString name() const { return m_name; }
    void setName(const QString& name) { m_name = name; }
    QString datasource() const { return m_datasource; }
    void setDatasource(const QString& source) { m_datasource = source; }
    // Fixed width 50: a longer text is cut, a shorter one filled with blanks.
    QString QueryName() const { return m_queryName; }
    void setQueryName(const QString& name) { m_queryName = fixedWidth(name); }
    QString Datatable() const { return m_datatable; }
    void setDatatable(const QString& table) { m_datatable = fixedWidth(table); }
    QString Crystalname() const { return m_crystalname; }
    void setCrystalname(const QString& file) { m_crystalname = file; }
    QString tag() const { return m_tag; }
    void setTag(const QString& tag) { m_tag = tag; }
    quint8 level() const { return m_level; }
    void setLevel(quint8 level) { m_level = level; }
    quint8 order() const { return m_order; }
    void setOrder(quint8 order) { m_order = order; }
    quint8 suboption() const { return m_suboption; }
    void setSuboption(quint8 suboption) { m_suboption = suboption; }
    qint16 GST() const { return m_gst; }
    void setGST(qint16 gst) { m_gst = gst; }
    QString details() const { return m_details; }
    void setDetails(const QString& details) { m_details = details; }
    QVariant Picture() const { return m_picture; }
    void setPicture(const QVariant& picture) { m_picture = picture; }

    static QString fixedWidth(const QString& text) { return text.left(50).leftJustified(50, u' '); }

private:
    QString m_id;
    bool m_idSet = false;
    qint32 m_row = 0;
    QString m_name;
    QString m_datasource;
    QString m_queryName = fixedWidth(QString());
    QString m_datatable = fixedWidth(QString());
    QString m_crystalname;
    QString m_tag;
    quint8 m_level = 0;
    quint8 m_order = 0;
    quint8 m_suboption = 0;
    qint16 m_gst = 0;
    QString m_details;
    QVariant m_picture;
};

inline void ReportInf::setId(const QString& id) {
    if (m_idSet) return;
    m_id = id;
    m_idSet = true;
}

} // namespace ql
