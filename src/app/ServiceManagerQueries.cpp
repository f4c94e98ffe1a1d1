#include "app/ServiceManagerQueries.h"

bool ServiceManagerQueries::ServiceExists(const stdstr& name) {
    return m_manager.ServiceExists(name);
}

bool ServiceManagerQueries::ServiceHasStarted(const stdstr& name) {
    return m_manager.ServiceHasStarted(name);
}

bool ServiceManagerQueries::ServiceHasStopped(const stdstr& name) {
    return m_manager.ServiceHasStopped(name);
}
