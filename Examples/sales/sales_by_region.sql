-- A year's sales in some regions. The functions quote what comes in: names may hold apostrophes, a heading anything.
select r.name as region, count(distinct o.order_id) as orders, sum(l.quantity) as pieces,
       cast(sum(l.net_price) as integer) as #dq($heading)#
from order_line l
join sales_order o on o.order_id = l.order_id
join customer c on c.customer_id = o.customer_id
join region r on r.region_id = c.region_id
where r.name in (#csv(@regions)#)
  and o.order_date like #sq($year + '-%')#
  and o.status <> 'void'
group by r.name
order by 4 desc;
