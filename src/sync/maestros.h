#pragma once
#include "sync/atributos.h"
#include "sync/marcas.h"
#include "sync/retirados.h"
#include "sync/vales.h"
